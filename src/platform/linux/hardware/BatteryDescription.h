#pragma once

#include <optional>
#include <vector>

#include "platform/PropertyValue.h"
#include "platform/linux/hardware/PowerSupplyText.h"

namespace korvantis {

/// All batteries of a machine taken together as one power source, under the keys of a power source
/// description; absent when there is no battery.
std::optional<PropertyMap> powerSourceDescription(const std::vector<PowerSupply>& supplies);

/// The same as the registry entry of a battery: milliamperes, millivolts, and the temperature in
/// tenths of a kelvin; absent when there is no battery.
std::optional<PropertyMap> batteryProperties(const std::vector<PowerSupply>& supplies);

/// What the batteries give, in watts; absent while they don't discharge or don't tell.
std::optional<double> dischargingWatts(const std::vector<PowerSupply>& supplies);

/// Degrees Celsius of the hottest battery; absent when none tells.
std::optional<double> batteryCelsius(const std::vector<PowerSupply>& supplies);

}  // namespace korvantis
