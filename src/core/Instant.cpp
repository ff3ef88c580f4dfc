#include "core/Instant.h"

#include "platform/Clock.h"

namespace korvantis {

Instant Instant::now() {
  // Lives for ever: at exit other threads may still ask for the time.
  static const Clock& clock = *new Clock(systemClock());
  return Instant{clock.now()};
}

}  // namespace korvantis
