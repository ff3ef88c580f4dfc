#pragma once

#include <cstdint>
#include <map>
#include <systemd/sd-bus.h>
#include <vector>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Power assertions by process.
using AssertionsByProcess = std::map<std::int32_t, std::vector<PropertyMap>>;

/// The answer of logind's `ListInhibitors` as assertions: only what blocks sleeping or idling, not
/// what merely delays it. One that blocks both makes two. Reads up to the first damage.
AssertionsByProcess readInhibitors(sd_bus_message* answer);

}  // namespace korvantis
