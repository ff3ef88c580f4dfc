#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/IORegistryCalls.h"
#include "platform/linux/hardware/Accelerators.h"
#include "platform/linux/hardware/BusFacts.h"
#include "platform/linux/hardware/ControllerKeys.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/PowerSupplies.h"
#include "platform/linux/hardware/ThermalPressure.h"

namespace korvantis {

/// Answers what is asked about graphics, neural processors, sensors, fans, batteries and whatever
/// sits on the system bus, in the shapes of the seam. Volumes have a class of their own. Any
/// thread; what it keeps between calls has locks of its own.
class LinuxHardware {
 public:
  explicit LinuxHardware(const HardwareSources& sources);

  /// The services of a class of the registry; absent for classes that are not answered here.
  std::optional<std::vector<IORegistryEntry>> services(const std::string& className);

  /// The descriptions of all power sources; absent when the kernel tells of none.
  std::optional<std::vector<std::optional<PropertyMap>>> powerSources();

  /// Power assertions by process.
  AssertionsByProcess assertions() { return bus.assertions(); }

  /// How hot the machine is, 0 to 3.
  std::int64_t thermalState() { return thermal.state(); }

  /// The keys of the system controller.
  ControllerKeys& controllerKeys() { return keys; }

 private:
  std::vector<IORegistryEntry> batteries();

  PowerSupplies supplies;
  Accelerators accelerators;
  ControllerKeys keys;
  ThermalPressure thermal;
  BusFacts bus;
};

/// The one that answers for the running system. It is made on first use and goes with the last
/// operation that refers to it.
std::shared_ptr<LinuxHardware> systemHardware();

}  // namespace korvantis
