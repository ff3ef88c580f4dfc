#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace korvantis {

/// `value` cut toward zero. What lies beyond the range becomes its nearest end, and no number 0:
/// figures come from rates and from a file that anything may have written into.
inline std::int64_t cutTowardZero(double value) {
  constexpr double firstTooLarge = 9223372036854775808.0;
  if (std::isnan(value)) return 0;
  if (value >= firstTooLarge) return std::numeric_limits<std::int64_t>::max();
  if (value < -firstTooLarge) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

/// A count as the database holds it, which knows only signed numbers.
inline std::int64_t signedCount(std::uint64_t count) {
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  return static_cast<std::int64_t>(std::min(count, most));
}

/// A stored count; a negative one is 0.
inline std::uint64_t unsignedCount(std::int64_t stored) {
  return static_cast<std::uint64_t>(std::max<std::int64_t>(stored, 0));
}

/// The start of the bucket of `length` seconds in which a moment lies, both in whole seconds.
constexpr std::int64_t bucketStart(std::int64_t seconds, std::int64_t length) {
  return seconds / length * length;
}

}  // namespace korvantis
