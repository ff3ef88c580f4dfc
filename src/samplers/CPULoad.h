#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/MachHostCalls.h"
#include "samplers/CoreTicks.h"

namespace korvantis {

/// How busy the processor was between two readings, in percent from 0 to 100.
struct CPULoad {
  /// One figure a core, in core order.
  std::vector<double> perCoreCPUPercent;
  /// The whole machine; every core weighs by its ticks.
  double cpuPercent = 0;
  /// Its share in user mode, lowered priority included.
  double cpuUserPercent = 0;
  double cpuSystemPercent = 0;

  bool operator==(const CPULoad&) const = default;
};

/// What stands in when the system gives no ticks.
CPULoad cpuLoadWithoutTicks();

/// The ticks in a `PROCESSOR_CPU_LOAD_INFO` reply of four words a core. A word is a signed
/// number, and a negative one counts as 0. Words beyond the last whole core are left out.
std::vector<CoreTicks> decodedCoreTicks(std::span<const std::int32_t> reply);

/// The ticks of every core now; empty when the system gives none. Any thread.
std::vector<CoreTicks> readCoreTicks(const MachHostCalls& calls);

/// The load from `previous` to `current`. A tick count that fell counts as unchanged. Lists of
/// different lengths can't be compared: then fixed figures stand in, on the first tick too.
CPULoad cpuLoad(std::span<const CoreTicks> previous, std::span<const CoreTicks> current);

}  // namespace korvantis
