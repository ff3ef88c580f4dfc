#pragma once

#include <cstdint>

namespace korvantis {

/// The least time, in seconds, over which a rate of the machine is stated.
inline constexpr double machineRateFloorSeconds = 0.2;

/// Bytes per second from one reading of a counter to the next, `elapsed` seconds later. 0 when
/// the counter fell, and when it was 0 before: its first figure is all of the machine's past.
constexpr double machineRate(std::uint64_t before, std::uint64_t after, double elapsed) {
  return before > 0 && after >= before ? static_cast<double>(after - before) / elapsed : 0;
}

}  // namespace korvantis
