#pragma once

#include "core/HardwareInfo.h"
#include "platform/PlatformCalls.h"

namespace korvantis {

/// Asks the system what the machine is, registry and all. What it does not say is guessed from
/// what it does. Slow: ask once. Any thread.
HardwareInfo surveyHardware(const PlatformCalls& calls);

}  // namespace korvantis
