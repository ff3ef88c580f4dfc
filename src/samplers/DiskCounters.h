#pragma once

#include <cstdint>

#include "platform/IORegistryCalls.h"

namespace korvantis {

/// Bytes that all disks have read and written since the machine started.
struct DiskCounters {
  std::uint64_t readBytes = 0;
  std::uint64_t writeBytes = 0;

  bool operator==(const DiskCounters&) const = default;
};

/// The sums over the statistics of all block storage drivers. One without statistics adds
/// nothing; both sums are 0 when the drivers can't be listed. Any thread.
DiskCounters readDiskCounters(const IORegistryCalls& registry);

}  // namespace korvantis
