#pragma once

#include <cstdint>
#include <optional>

namespace korvantis {

/// When the process that has the number `pid` now began, in whole seconds since the start of 1970,
/// as `PROC_PIDTBSDINFO` tells it; absent when there is none or it can't be told. Asks the system
/// each time and marks nothing as shown. Any thread.
std::optional<double> systemProcessStart(std::int32_t pid);

}  // namespace korvantis
