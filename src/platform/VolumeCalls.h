#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace korvantis {

/// What the system tells of the volume that holds a path, in bytes.
struct VolumeResourceValues {
  /// `NSURLVolumeTotalCapacityKey`.
  std::optional<std::int64_t> totalCapacity;
  /// `NSURLVolumeAvailableCapacityForImportantUsageKey`: counts space that would be purged.
  std::optional<std::int64_t> availableCapacityForImportantUsage;
};

/// Facts about volumes. Any thread.
struct VolumeCalls {
  /// The values of the volume that holds `path`; absent when they can't be read.
  std::function<std::optional<VolumeResourceValues>(const std::string& path)> resourceValues;
};

}  // namespace korvantis
