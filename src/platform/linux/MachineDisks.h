#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/DiskStatistics.h"
#include "platform/linux/KeptFile.h"
#include "platform/linux/MachineSources.h"
#include "platform/linux/RememberedNames.h"

namespace korvantis {

/// The machine's disks: those that are devices of their own, so that no byte counts twice through
/// a partition, a mapping, a loop or compressed swap. Any thread.
class MachineDisks {
 public:
  explicit MachineDisks(const MachineSources& sources);

  /// The counters of every disk now; absent when the system does not tell.
  std::optional<std::vector<BlockDeviceCounters>> read();

  /// The bytes of memory that compressed swap devices occupy now.
  std::uint64_t readZramBytes();

 private:
  const std::string blockFolder;
  KeptFile statistics;
  RememberedNames diskNames;
  RememberedNames zramNames;
};

}  // namespace korvantis
