#pragma once

#include "platform/PlatformCalls.h"
#include "platform/linux/MachineSources.h"

namespace korvantis {

/// Puts the answers about the machine as a whole into `calls`: ticks, page counters, named
/// figures, load averages, the registry and volumes. Its `sysctl` gains the interface list and
/// keeps its other answers. All answers share what they keep between calls.
void addMachineCalls(PlatformCalls& calls, const MachineSources& sources);

}  // namespace korvantis
