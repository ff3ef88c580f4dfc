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
#include "platform/linux/hardware/PacedWork.h"
#include "platform/linux/hardware/UnhurriedVolumes.h"
#include "platform/linux/hardware/VolumeTraits.h"

namespace korvantis {

/// The mounted volumes. The list of mounts stays open and is read and understood again only when
/// the kernel says that it changed, and then in the background: with thousands of mounts the kernel
/// takes milliseconds to write it. Any thread.
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

  void readFirst();
  void readAgain();
  std::optional<std::vector<Volume>> readList() const;
  std::optional<Volume> volumeAt(const std::string& path);

  const std::string root;
  const std::function<bool(int)> mountsChanged;
  const Space space;
  UnhurriedVolumes unhurried;

  /// Held while the list is read, so that nobody closes it meanwhile; taken before `lock`.
  std::mutex reading;
  FileDescriptor list;

  std::mutex lock;
  bool stale = false;
  std::optional<std::vector<Volume>> volumes;

  /// The last member: its thread ends before what it uses goes.
  PacedWork work;
};

}  // namespace korvantis
