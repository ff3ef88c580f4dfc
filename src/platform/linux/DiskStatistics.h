#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// Bytes that have gone through one block device.
struct BlockDeviceCounters {
  std::string name;
  std::uint64_t readBytes = 0;
  std::uint64_t writtenBytes = 0;

  bool operator==(const BlockDeviceCounters&) const = default;
};

/// The devices of a `/proc/diskstats` text, in its order; partitions and stacked devices too.
/// Lines that are damaged or cut off are left out.
std::vector<BlockDeviceCounters> parseDiskStatistics(std::string_view text);

/// Whether a name is one that the kernel gives to whole disks, for where nothing else tells.
bool isWholeDiskName(std::string_view name);

}  // namespace korvantis
