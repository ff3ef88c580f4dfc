#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace korvantis {

/// A process that holds a device open.
struct DeviceHolder {
  std::int32_t pid = 0;
  std::string name;
  /// One of its descriptors of the device.
  std::int32_t descriptor = 0;

  bool operator==(const DeviceHolder&) const = default;
};

/// Who holds graphics devices and neural engines.
struct DeviceHolders {
  std::vector<DeviceHolder> graphics;
  std::vector<DeviceHolder> neural;
};

/// Walks the first 128 descriptors of every process whose descriptors this user may see, in the
/// order of their numbers. Nothing is walked where there is no such device. Milliseconds: not for
/// a tick. Any thread.
DeviceHolders findDeviceHolders(const std::string& root);

/// The name of a process; empty when it has gone. Any thread.
std::string processName(const std::string& root, std::int32_t pid);

}  // namespace korvantis
