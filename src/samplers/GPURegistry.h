#pragma once

#include <cstdint>

#include "platform/IORegistryCalls.h"
#include "samplers/GPUTimeByPID.h"

namespace korvantis {

/// Load and memory of the busiest GPU.
struct GPUFigures {
  /// As the device tells it, not held to any range.
  double percent = 0;
  std::uint64_t memoryBytes = 0;

  bool operator==(const GPUFigures&) const = default;
};

/// GPU time of each process, summed over its clients of all accelerators. A client without a
/// process or without time adds no entry. Any thread.
GPUTimeByPID readGPUTimeByPID(const IORegistryCalls& registry);

/// Load and memory, each the largest of all accelerators; both 0 when there are none. Any thread.
GPUFigures readGPUFigures(const IORegistryCalls& registry);

}  // namespace korvantis
