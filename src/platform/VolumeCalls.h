#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// What the system tells of the volume that holds a path; sizes in bytes. A key that the volume
/// does not have is absent.
struct VolumeResourceValues {
  /// `NSURLVolumeTotalCapacityKey`.
  std::optional<std::int64_t> totalCapacity = std::nullopt;
  /// `NSURLVolumeAvailableCapacityForImportantUsageKey`: counts space that would be purged.
  std::optional<std::int64_t> availableCapacityForImportantUsage = std::nullopt;
  /// `NSURLVolumeAvailableCapacityKey`.
  std::optional<std::int64_t> availableCapacity = std::nullopt;
  /// `NSURLVolumeNameKey`.
  std::optional<std::string> name = std::nullopt;
  /// `NSURLVolumeIsInternalKey`.
  std::optional<bool> isInternal = std::nullopt;
  /// `NSURLVolumeIsRemovableKey`.
  std::optional<bool> isRemovable = std::nullopt;
};

/// Facts about volumes. Any thread.
struct VolumeCalls {
  /// The values of the volume that holds `path`; absent when they can't be read.
  std::function<std::optional<VolumeResourceValues>(const std::string& path)> resourceValues;

  /// The paths of the mounted volumes that are not hidden
  /// (`mountedVolumeURLsIncludingResourceValuesForKeys:options:`); absent when there is no reply.
  std::function<std::optional<std::vector<std::string>>()> mountedVolumePaths;
};

}  // namespace korvantis
