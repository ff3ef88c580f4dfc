#include "samplers/MountedVolumeList.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {
namespace {

constexpr std::string_view systemVolumes = "/System/Volumes/";
constexpr std::string_view userDataVolume = "/System/Volumes/Data";

bool belongsToSystem(std::string_view path) {
  return path.starts_with(systemVolumes) && path != userDataVolume;
}

/// "/" for the root, as a path's own last part.
std::string lastPathComponent(const std::string& path) {
  const std::size_t end = path.find_last_not_of('/');
  if (end == std::string::npos) return path.empty() ? "" : "/";
  const std::size_t slash = path.rfind('/', end);
  const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
  return path.substr(begin, end - begin + 1);
}

std::uint64_t freeBytesOf(const VolumeResourceValues& values) {
  auto free = values.availableCapacityForImportantUsage;
  if (!free) free = values.availableCapacity;
  return static_cast<std::uint64_t>(std::max<std::int64_t>(free.value_or(0), 0));
}

std::optional<MountedVolume> volumeOf(const std::string& path, const VolumeResourceValues& values) {
  if (values.totalCapacity.value_or(0) < 1) return std::nullopt;
  return MountedVolume{.name = values.name.value_or(lastPathComponent(path)),
                       .path = path,
                       .totalBytes = static_cast<std::uint64_t>(*values.totalCapacity),
                       .freeBytes = freeBytesOf(values),
                       .isInternal = values.isInternal.value_or(path == "/"),
                       .isRemovable = values.isRemovable.value_or(false)};
}

}  // namespace

std::vector<MountedVolume> readMountedVolumes(const VolumeCalls& volumes) {
  std::vector<MountedVolume> mounted;
  const auto paths = volumes.mountedVolumePaths();
  if (!paths) return mounted;
  for (const std::string& path : *paths) {
    if (belongsToSystem(path)) continue;
    const auto values = volumes.resourceValues(path);
    if (!values) continue;
    if (auto volume = volumeOf(path, *values)) mounted.push_back(std::move(*volume));
  }
  return mounted;
}

}  // namespace korvantis
