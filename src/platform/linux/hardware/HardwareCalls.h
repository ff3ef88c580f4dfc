#pragma once

#include <memory>

#include "platform/PlatformCalls.h"
#include "platform/SMCCalls.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/LinuxHardware.h"

namespace korvantis {

/// Puts the answers about hardware into `calls`: registry classes, power, thermal state and
/// volumes. What `calls` answered before about other classes and about the capacity of a path
/// stays in use behind them.
void addHardwareCalls(PlatformCalls& calls, const HardwareSources& sources,
                      const std::shared_ptr<LinuxHardware>& hardware);

/// The controller of this hardware.
SMCCalls controllerCallsOf(const std::shared_ptr<LinuxHardware>& hardware);

}  // namespace korvantis
