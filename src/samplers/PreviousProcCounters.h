#pragma once

#include <cstdint>

namespace korvantis {

/// The counters of one process as a tick left them: what the next tick's rates are measured
/// against. All but `timestamp` only ever grow while the process lives.
struct PreviousProcCounters {
  /// User plus system time in nanoseconds.
  std::uint64_t cpuTimeNs = 0;
  std::uint64_t gpuTimeNs = 0;
  std::uint64_t diskReadBytes = 0;
  std::uint64_t diskWriteBytes = 0;
  /// Seconds since 1970 when they were read.
  double timestamp = 0;

  bool operator==(const PreviousProcCounters&) const = default;
};

}  // namespace korvantis
