#include "core/Instant.h"

#include "platform/Clock.h"

namespace korvantis {

Instant Instant::now() {
  static const Clock clock = systemClock();
  return Instant{clock.now()};
}

}  // namespace korvantis
