#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace korvantis {

/// Load and memory of the GPU, and who holds the Neural Engine.
struct GPUAndANESample {
  /// 0 to 100.
  double gpuPercent = 0;
  std::uint64_t gpuMemoryBytes = 0;
  /// 0 to 100.
  double anePercent = 0;
  double aneWatts = 0;
  std::optional<std::string> aneHolder;

  bool operator==(const GPUAndANESample&) const = default;
};

}  // namespace korvantis
