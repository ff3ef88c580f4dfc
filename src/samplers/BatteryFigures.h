#pragma once

#include "core/BatterySample.h"
#include "platform/IORegistryCalls.h"
#include "platform/PowerCalls.h"

namespace korvantis {

/// The battery now. A machine without one, or that tells nothing, has fixed figures: full, on
/// mains, 98 percent health, 48 cycles, 31.2 degrees, 0 watts. Any thread.
BatterySample readBattery(const PowerCalls& power, const IORegistryCalls& registry);

}  // namespace korvantis
