#pragma once

#include "platform/PlatformCalls.h"

namespace korvantis {

/// Puts the system's own answers about the machine as a whole into `calls`: ticks, page counters,
/// named figures, load averages, the registry and volumes.
void addMachineCalls(PlatformCalls& calls);

}  // namespace korvantis
