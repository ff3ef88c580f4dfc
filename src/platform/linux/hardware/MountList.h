#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// A mounted file system that a person would call a volume.
struct MountedFileSystem {
  /// "8:1"; tells two file systems apart.
  std::string number;
  std::string path;
  /// What is mounted, such as "/dev/sda1" or "server:/home".
  std::string source;
  /// Whether a question about it can take for ever: its answers come from elsewhere.
  bool remote = false;

  bool operator==(const MountedFileSystem&) const = default;
};

/// The volumes among the mounts of `/proc/self/mountinfo`, the root first and the others in their
/// order. Left out are the system's own file systems and folders; of several mounts of one file
/// system the first stays, and of several on one path the last, which hides the others.
std::vector<MountedFileSystem> parseMountList(std::string_view mountinfo);

}  // namespace korvantis
