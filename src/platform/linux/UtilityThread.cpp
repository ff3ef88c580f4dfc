#include "platform/linux/UtilityThread.h"

#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <utility>

namespace korvantis {

void yieldToOthers() {
  constexpr int utilityNiceness = 10;
  // 0 names the calling thread. A refusal only means that it runs at the usual priority.
  if (::getpriority(PRIO_PROCESS, 0) < utilityNiceness) {
    static_cast<void>(::setpriority(PRIO_PROCESS, 0, utilityNiceness));
  }
}

bool startUtilityThread(std::function<void()> work) {
  return startThread([work = std::move(work)] {
    yieldToOthers();
    work();
  });
}

bool startThread(std::function<void()> work) {
  try {
    std::thread(std::move(work)).detach();
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

}  // namespace korvantis
