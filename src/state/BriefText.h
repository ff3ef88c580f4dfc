#pragma once

#include <string>

#include "core/EngineSnapshot.h"

namespace korvantis {

/// The five lines of a phone brief, joined by line feeds, none at the end. `trigger` says what
/// caused it. The temperature is always in degrees Celsius, so that a phone shows the same text
/// whatever the window shows. Any thread.
std::string formatBrief(const EngineSnapshot& snapshot, const std::string& chipName,
                        const std::string& trigger);

}  // namespace korvantis
