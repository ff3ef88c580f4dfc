#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/PlatformEnergy.h"
#include "platform/linux/hardware/PowerSupplies.h"
#include "platform/linux/hardware/SensorReadings.h"

namespace korvantis {

/// What a key of the controller holds.
struct ControllerValue {
  /// The four letters of the type, packed like a key.
  std::uint32_t type = 0;
  std::vector<std::uint8_t> bytes;

  bool operator==(const ControllerValue&) const = default;
};

/// Temperatures, power and fans of this machine as keys of a System Management Controller. All
/// keys come from one reading, made anew when it is older than a quarter of a second. Any thread.
class ControllerKeys {
 public:
  /// `graphicsCelsius` stands in where no sensor of a graphics card is found; absent: unknown.
  ControllerKeys(const HardwareSources& sources, PowerSupplies& supplies,
                 std::function<std::optional<double>()> graphicsCelsius);

  /// The value of a key now; absent when this machine does not have it.
  std::optional<ControllerValue> value(std::uint32_t key);

 private:
  void refresh();

  const std::function<double()> monotonicSeconds;
  const std::function<std::optional<double>()> graphicsCelsius;
  PowerSupplies& supplies;

  /// Held while reading: a second thread then takes what the first has just read.
  std::mutex lock;
  SensorReadings sensors;
  PlatformEnergy energy;
  std::optional<double> readAt;
  std::map<std::uint32_t, ControllerValue> values;
};

}  // namespace korvantis
