#pragma once

#include <systemd/sd-bus.h>
#include <vector>

#include "platform/PropertyValue.h"

namespace korvantis {

/// The answer of BlueZ's `GetManagedObjects` as properties of input devices: the connected ones
/// that tell how full their battery is. Reads up to the first damage.
std::vector<PropertyMap> readBluetoothDevices(sd_bus_message* answer);

}  // namespace korvantis
