#include "platform/WorkQueueCalls.h"
#include "platform/linux/UtilityThread.h"

namespace korvantis {

WorkQueueCalls systemWorkQueueCalls() {
  return WorkQueueCalls{startUtilityThread};
}

}  // namespace korvantis
