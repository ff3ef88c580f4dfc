#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/linux/hardware/MountList.h"

namespace korvantis {

/// What the devices below a volume tell of it.
struct VolumeTraits {
  /// Its label, else the last part of its path; absent for a root without a label.
  std::optional<std::string> name;
  /// Absent when its device is unknown.
  std::optional<bool> isInternal;
  std::optional<bool> isRemovable;

  bool operator==(const VolumeTraits&) const = default;
};

/// The labels of file systems by the names of their devices, from `/dev/disk/by-label`.
std::map<std::string, std::string> readVolumeLabels(const std::string& root);

/// Looks through `/sys/class/block` below a root folder. Any thread.
VolumeTraits readVolumeTraits(const std::string& root, const MountedFileSystem& mount,
                              const std::map<std::string, std::string>& labels);

}  // namespace korvantis
