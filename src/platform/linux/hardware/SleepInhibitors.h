#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Power assertions by process.
using AssertionsByProcess = std::map<std::int32_t, std::vector<PropertyMap>>;

/// The answer of logind's `ListInhibitors` as assertions: only what blocks sleeping or idling, not
/// what merely delays it. One that blocks both makes two. Reads up to the first damage.
AssertionsByProcess readInhibitors(sd_bus_message* answer);

/// The paths in the answer of the GNOME session manager's `GetInhibitors`, at most 16.
std::vector<std::string> readInhibitorPaths(sd_bus_message* answer);

/// An inhibitor of that session manager as assertions, by the answers of its `GetAppId`,
/// `GetReason` and `GetFlags`; null for one that did not come.
std::vector<PropertyMap> readSessionInhibitor(sd_bus_message* application, sd_bus_message* reason,
                                              sd_bus_message* flags);

}  // namespace korvantis
