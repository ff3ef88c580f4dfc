#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One mounted volume.
struct MountedVolume {
  std::string name;
  std::string path;
  std::uint64_t totalBytes = 0;
  std::uint64_t freeBytes = 0;
  bool isInternal = false;
  bool isRemovable = false;

  bool operator==(const MountedVolume&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return path; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"name", &MountedVolume::name},
                      Field{"path", &MountedVolume::path},
                      Field{"totalBytes", &MountedVolume::totalBytes},
                      Field{"freeBytes", &MountedVolume::freeBytes},
                      Field{"isInternal", &MountedVolume::isInternal},
                      Field{"isRemovable", &MountedVolume::isRemovable}};
  }
};

}  // namespace korvantis
