#pragma once

#include <functional>

namespace korvantis {

/// Where all time comes from, so that every rule can be tested at its exact boundary.
struct Clock {
  /// Seconds since the start of 1970 (UTC) by the wall clock. Any thread.
  std::function<double()> now;
};

/// The system's wall clock.
Clock systemClock();

}  // namespace korvantis
