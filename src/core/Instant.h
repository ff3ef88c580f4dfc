#pragma once

#include <compare>

namespace korvantis {

/// A point in time: seconds since the start of 1970 (UTC), fractions included.
/// In JSON it is that number.
struct Instant {
  double secondsSince1970 = 0;

  auto operator<=>(const Instant&) const = default;

  /// The present moment by the system's wall clock. Any thread.
  static Instant now();
};

/// `later` minus `earlier` in seconds; negative when they stand the other way round.
constexpr double secondsBetween(Instant earlier, Instant later) {
  return later.secondsSince1970 - earlier.secondsSince1970;
}

}  // namespace korvantis
