#pragma once

#include <string_view>
#include <vector>

#include "platform/linux/LinkCounters.h"

namespace korvantis {

/// The interfaces of a `/proc/net/dev` text, numbered in its order from 1, without flags. Lines
/// that are damaged or cut off are left out.
std::vector<LinkCounters> parseNetworkDeviceTable(std::string_view text);

}  // namespace korvantis
