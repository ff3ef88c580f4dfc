#pragma once

#include "samplers/PreviousProcCounters.h"

namespace korvantis {

/// What a process did between two readings of its counters.
struct ProcessRates {
  /// Of one core: 0 to 1600.
  double cpuPercent = 0;
  /// 0 to 100.
  double gpuPercent = 0;
  double diskReadBytesPerSec = 0;
  double diskWriteBytesPerSec = 0;

  bool operator==(const ProcessRates&) const = default;
};

/// The rates from `previous` to `current` over the time between them, at least 0.15 s. A counter
/// that fell (the pid was reused) gives 0, and so does GPU time that was 0 before: its first
/// figure is all of the process's past. Any thread.
ProcessRates processRates(const PreviousProcCounters& previous,
                          const PreviousProcCounters& current);

}  // namespace korvantis
