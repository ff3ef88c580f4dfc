#include "platform/linux/hardware/LinuxHardware.h"

#include <mutex>
#include <utility>

#include "platform/linux/hardware/BatteryDescription.h"

namespace korvantis {
namespace {

IORegistryEntry entryOf(PropertyMap properties) {
  return {[properties = std::move(properties)] { return std::optional(properties); },
          [] { return std::vector<IORegistryEntry>(); }};
}

}  // namespace

LinuxHardware::LinuxHardware(const HardwareSources& sources)
    : supplies(sources),
      accelerators(sources),
      keys(sources, supplies, [this] { return accelerators.nvidiaCelsius(); }),
      thermal(sources),
      bus(sources) {}

std::vector<IORegistryEntry> LinuxHardware::batteries() {
  std::vector<IORegistryEntry> services;
  const auto all = supplies.read();
  auto properties = all ? batteryProperties(*all) : std::nullopt;
  if (properties) services.push_back(entryOf(std::move(*properties)));
  return services;
}

std::optional<std::vector<IORegistryEntry>> LinuxHardware::services(const std::string& className) {
  if (className == "IOAccelerator") return accelerators.graphicsServices();
  if (className == "AppleH11ANEInterface") return accelerators.neuralServices();
  if (className == "AppleSmartBattery") return batteries();
  if (className != "AppleDeviceManagementHIDEventService") return std::nullopt;
  std::vector<IORegistryEntry> devices;
  for (PropertyMap& device : bus.bluetoothDevices()) devices.push_back(entryOf(std::move(device)));
  return devices;
}

std::optional<std::vector<std::optional<PropertyMap>>> LinuxHardware::powerSources() {
  const auto all = supplies.read();
  if (!all) return std::nullopt;
  std::vector<std::optional<PropertyMap>> sources;
  auto description = powerSourceDescription(*all);
  if (description) sources.emplace_back(std::move(description));
  return sources;
}

std::shared_ptr<LinuxHardware> systemHardware() {
  static std::mutex& lock = *new std::mutex;
  static std::weak_ptr<LinuxHardware>& known = *new std::weak_ptr<LinuxHardware>;
  const std::scoped_lock guard(lock);
  auto hardware = known.lock();
  if (!hardware) {
    hardware = std::make_shared<LinuxHardware>(systemHardwareSources());
    known = hardware;
  }
  return hardware;
}

}  // namespace korvantis
