#include "samplers/BluetoothPeripheralList.h"

#include <array>
#include <initializer_list>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "core/LowerCase.h"
#include "samplers/RegistryNumbers.h"

namespace korvantis {
namespace {

constexpr std::array deviceClasses{"AppleDeviceManagementHIDEventService", "IOBluetoothHIDDriver",
                                   "AppleHSBluetoothDevice"};

bool containsAny(const std::string& text, std::initializer_list<const char*> words) {
  for (const char* word : words) {
    if (text.find(word) != std::string::npos) return true;
  }
  return false;
}

std::string categoryOf(const std::string& name) {
  const std::string lowered = lowerCased(name);
  if (containsAny(lowered, {"keyboard"})) return "keyboard";
  if (containsAny(lowered, {"mouse", "trackpad"})) return "pointing";
  if (containsAny(lowered, {"airpods", "beats", "headphone"})) return "audio";
  return "accessory";
}

std::optional<BluetoothPeripheral> peripheralOf(const PropertyMap& device) {
  auto name = textProperty(device, "Product");
  if (!name) name = textProperty(device, "DeviceName");
  if (!name || name->empty()) return std::nullopt;
  auto percent = wholeNumberProperty(device, "BatteryPercent");
  if (!percent) percent = wholeNumberProperty(device, "BatteryPercentSingle");
  if (!percent || *percent < 1) return std::nullopt;
  return BluetoothPeripheral{.name = *name,
                             .category = categoryOf(*name),
                             .batteryPercent = *percent,
                             .leftPercent = wholeNumberProperty(device, "BatteryPercentLeft"),
                             .rightPercent = wholeNumberProperty(device, "BatteryPercentRight"),
                             .casePercent = wholeNumberProperty(device, "BatteryPercentCase")};
}

}  // namespace

std::vector<BluetoothPeripheral> readBluetoothPeripherals(const IORegistryCalls& registry) {
  std::vector<BluetoothPeripheral> peripherals;
  std::unordered_set<std::string> seenNames;
  for (const char* className : deviceClasses) {
    const auto services = registry.matchingServices(className);
    if (!services) continue;
    for (const IORegistryEntry& service : *services) {
      const auto device = service.createCFProperties();
      if (!device) continue;
      auto peripheral = peripheralOf(*device);
      if (!peripheral || !seenNames.insert(peripheral->name).second) continue;
      peripherals.push_back(std::move(*peripheral));
    }
  }
  return peripherals;
}

}  // namespace korvantis
