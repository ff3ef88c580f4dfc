#pragma once

#include <vector>

#include "core/SleepBlocker.h"
#include "platform/PowerCalls.h"

namespace korvantis {

/// One record for each power assertion of each process, ordered by process name as the user's
/// language orders names; empty when they can't be had. Any thread.
std::vector<SleepBlocker> readSleepBlockers(const PowerCalls& power);

}  // namespace korvantis
