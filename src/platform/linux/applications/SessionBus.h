#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/applications/ApplicationSources.h"

namespace korvantis {

/// Asks the session bus of the environment which processes hold the names that `isWanted` picks.
/// Blocks, a fifth of a second at most; empty without a bus. Any thread.
std::vector<BusNameHolder> sessionBusNameOwners(
    const std::function<bool(const std::string& name)>& isWanted);

/// Asks the process `pid` over the session bus to quit the application with this desktop id, when
/// it holds the name of that id and offers a way to quit; whether the request was taken. The
/// application may ask its user first. Blocks, three fifths of a second at most. Any thread.
bool quitOverSessionBus(const std::string& id, std::int32_t pid);

}  // namespace korvantis
