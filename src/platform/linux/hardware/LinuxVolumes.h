#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/VolumeCalls.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/MountList.h"
#include "platform/linux/hardware/UnhurriedVolumes.h"
#include "platform/linux/hardware/VolumeTraits.h"

namespace korvantis {

/// The mounted volumes. The list of mounts stays open and is read and understood again only when
/// the kernel says that it changed. Any thread.
class LinuxVolumes {
 public:
  using Space = UnhurriedVolumes::Ask;

  /// `space` gives the capacity of the volume that holds a path; for volumes of other machines it
  /// is asked on threads of its own.
  LinuxVolumes(const HardwareSources& sources, const Space& space);

  /// Where volumes are mounted, the root first; absent when the list can't be read.
  std::optional<std::vector<std::string>> paths();

  /// Capacity, name and kind of the volume that holds a path; absent when its capacity is unknown.
  std::optional<VolumeResourceValues> values(const std::string& path);

 private:
  struct Volume {
    MountedFileSystem mount;
    VolumeTraits traits;
  };

  bool isStale();
  std::optional<std::vector<Volume>> readList();
  std::optional<Volume> volumeAt(const std::string& path);

  const std::string root;
  const std::function<bool(int)> mountsChanged;
  const Space space;
  UnhurriedVolumes unhurried;

  /// Held while the list is read: the second of two ticks takes what the first has found.
  std::mutex lock;
  FileDescriptor list;
  std::optional<std::vector<Volume>> volumes;
};

}  // namespace korvantis
