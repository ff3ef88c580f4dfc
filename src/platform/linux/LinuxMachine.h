#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/IORegistryCalls.h"
#include "platform/VolumeCalls.h"
#include "platform/linux/KeptFile.h"
#include "platform/linux/MachineDisks.h"
#include "platform/linux/MachineInterfaces.h"
#include "platform/linux/MachineSources.h"

namespace korvantis {

/// Answers questions about the machine as a whole in the shapes of the seam, from `/proc`, `/sys`
/// and the kernel's own dumps. Any thread; what it keeps between calls has locks of its own.
class LinuxMachine {
 public:
  explicit LinuxMachine(const MachineSources& sources);

  /// `host_processor_info`; the reply goes back through `deallocate`.
  int processorInfo(int flavor, std::uint32_t* processorCount, std::int32_t** reply,
                    std::uint32_t* replyWords);

  /// `vm_deallocate`, for replies of `processorInfo`.
  static int deallocate(std::uintptr_t address);

  /// `host_statistics64`.
  int statistics(int flavor, std::int32_t* buffer, std::uint32_t* words);

  /// `sysctlbyname`, for the names that have an answer here.
  int namedFigure(const std::string& name, void* oldValue, std::size_t* oldSize);

  /// `sysctl` of the interface list.
  int interfaceList(void* oldValue, std::size_t* oldSize);

  /// `getloadavg`.
  int loadAverages(double* averages, int count);

  /// Installed memory in bytes; 0 when it can't be read.
  std::uint64_t installedMemory();

  /// The services of a class of the registry; classes without a counterpart have none.
  std::optional<std::vector<IORegistryEntry>> matchingServices(const std::string& className);

  /// The capacity of the volume that holds a path; absent when it can't be read.
  std::optional<VolumeResourceValues> volumeValues(const std::string& path) const;

 private:
  std::optional<std::string> memoryText();
  std::optional<std::string> figure(const std::string& name);
  std::optional<std::string> swapUsage();
  std::optional<std::int32_t> percentFree();
  std::optional<std::int32_t> pressureLevel();

  const std::string root;
  const std::function<double()> monotonicSeconds;
  const std::uint64_t pageSize;
  KeptFile ticks;
  KeptFile memory;
  KeptFile stalls;
  KeptFile load;
  MachineDisks disks;
  MachineInterfaces interfaces;
};

}  // namespace korvantis
