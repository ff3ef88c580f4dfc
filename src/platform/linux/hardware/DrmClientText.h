#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// What the kernel tells of one open graphics device in `/proc/PID/fdinfo/FD`.
struct DrmClientText {
  std::string driver;
  /// The PCI address of the card; empty for one that has none.
  std::string device;
  std::uint64_t client = 0;
  /// Nanoseconds that all engines together worked for this client; absent for drivers that count
  /// cycles instead.
  std::optional<std::uint64_t> engineNanoseconds;
  /// Cycles for this client and all cycles gone by, by engine.
  std::map<std::string, std::uint64_t> cycles;
  std::map<std::string, std::uint64_t> totalCycles;
  /// Bytes of graphics memory in use.
  std::uint64_t memoryBytes = 0;

  bool operator==(const DrmClientText&) const = default;
};

/// Reads the lines "drm-...:"; absent when there is no client in them, as for other kinds of files
/// and for drivers that count nothing.
std::optional<DrmClientText> parseDrmClient(std::string_view fdinfo);

}  // namespace korvantis
