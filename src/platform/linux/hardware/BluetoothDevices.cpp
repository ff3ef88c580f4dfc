#include "platform/linux/hardware/BluetoothDevices.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {
namespace {

struct Device {
  std::string alias;
  bool connected = false;
  std::optional<std::uint8_t> percentage;
};

void readValue(sd_bus_message* answer, std::string_view interface, std::string_view name,
               Device& device) {
  const bool ofDevice = interface == "org.bluez.Device1";
  const char* text = nullptr;
  int flag = 0;
  std::uint8_t percent = 0;
  if (ofDevice && name == "Alias") {
    if (sd_bus_message_read(answer, "v", "s", &text) > 0) device.alias = text;
  } else if (ofDevice && name == "Connected") {
    if (sd_bus_message_read(answer, "v", "b", &flag) > 0) device.connected = flag != 0;
  } else if (interface == "org.bluez.Battery1" && name == "Percentage") {
    if (sd_bus_message_read(answer, "v", "y", &percent) > 0) device.percentage = percent;
  } else {
    sd_bus_message_skip(answer, "v");
  }
}

/// Reads `a{sv}`; false at damage.
bool readInterface(sd_bus_message* answer, std::string_view interface, Device& device) {
  if (sd_bus_message_enter_container(answer, 'a', "{sv}") <= 0) return false;
  for (;;) {
    const int entered = sd_bus_message_enter_container(answer, 'e', "sv");
    if (entered < 0) return false;
    if (entered == 0) break;
    const char* name = nullptr;
    if (sd_bus_message_read(answer, "s", &name) <= 0) return false;
    readValue(answer, interface, name, device);
    if (sd_bus_message_exit_container(answer) < 0) return false;
  }
  return sd_bus_message_exit_container(answer) >= 0;
}

/// Reads `a{sa{sv}}`; false at damage.
bool readObject(sd_bus_message* answer, Device& device) {
  if (sd_bus_message_enter_container(answer, 'a', "{sa{sv}}") <= 0) return false;
  for (;;) {
    const int entered = sd_bus_message_enter_container(answer, 'e', "sa{sv}");
    if (entered < 0) return false;
    if (entered == 0) break;
    const char* interface = nullptr;
    if (sd_bus_message_read(answer, "s", &interface) <= 0) return false;
    if (!readInterface(answer, interface, device)) return false;
    if (sd_bus_message_exit_container(answer) < 0) return false;
  }
  return sd_bus_message_exit_container(answer) >= 0;
}

}  // namespace

std::vector<PropertyMap> readBluetoothDevices(sd_bus_message* answer) {
  std::vector<PropertyMap> devices;
  if (sd_bus_message_enter_container(answer, 'a', "{oa{sa{sv}}}") <= 0) return devices;
  while (sd_bus_message_enter_container(answer, 'e', "oa{sa{sv}}") > 0) {
    const char* path = nullptr;
    Device device;
    if (sd_bus_message_read(answer, "o", &path) <= 0 || !readObject(answer, device)) break;
    if (sd_bus_message_exit_container(answer) < 0) break;
    if (!device.connected || !device.percentage) continue;
    devices.push_back({{"Product", PropertyValue{device.alias}},
                       {"BatteryPercent", PropertyValue{std::int64_t{*device.percentage}}}});
  }
  return devices;
}

}  // namespace korvantis
