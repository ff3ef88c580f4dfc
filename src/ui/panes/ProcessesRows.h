#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/EngineSnapshot.h"
#include "ui/panes/ProcessesRow.h"

/// The cards of the other lists of the processes pane, in the order of the snapshot. Any thread.
namespace korvantis::ProcessesRows {

/// A card for each project, with the first 6 of its processes.
std::vector<ProcessesRow> projects(const EngineSnapshot& snapshot);
std::vector<ProcessesRow> containers(const EngineSnapshot& snapshot);
std::vector<ProcessesRow> ports(const EngineSnapshot& snapshot);
std::vector<ProcessesRow> idleServers(const EngineSnapshot& snapshot);

/// When the process with that pid began; absent when the snapshot doesn't know one.
std::optional<Instant> startOf(const EngineSnapshot& snapshot, std::int32_t pid);

}  // namespace korvantis::ProcessesRows
