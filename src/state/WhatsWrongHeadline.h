#pragma once

#include <string>

#include "core/EngineSnapshot.h"
#include "state/TemperatureUnit.h"

namespace korvantis {

/// One sentence on what is wrong with the machine in that tick: strain before forgotten servers
/// before nothing at all. Any thread.
std::string whatsWrongHeadline(const EngineSnapshot& snapshot, TemperatureUnit unit);

}  // namespace korvantis
