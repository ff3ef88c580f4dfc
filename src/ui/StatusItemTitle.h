#pragma once

#include <string>
#include <vector>

#include "platform/StatusItemCalls.h"
#include "state/MonitorStore.h"

namespace korvantis {

/// The text beside the status item's picture for this tick: one blank, then the figures that the
/// user chose, in the user's unit of temperature. Main thread.
std::string statusItemTitle(MonitorStore& store, const EngineSnapshot& snapshot);

/// The picture of the status item in the sizes that trays ask for, in one grey that stands out on
/// dark and on light panels: nobody tells which one it will be. Main thread.
std::vector<StatusItemImage> statusItemImages();

}  // namespace korvantis
