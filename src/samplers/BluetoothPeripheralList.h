#pragma once

#include <vector>

#include "core/BluetoothPeripheral.h"
#include "platform/IORegistryCalls.h"

namespace korvantis {

/// The connected Bluetooth devices that report a battery, in the order in which they are found;
/// each name once. Any thread.
std::vector<BluetoothPeripheral> readBluetoothPeripherals(const IORegistryCalls& registry);

}  // namespace korvantis
