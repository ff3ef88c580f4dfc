#pragma once

#include <cstdint>

namespace korvantis {

/// `NSProcessInfo` `thermalState`: 0 nominal, 1 fair, 2 serious, 3 critical. Any thread.
std::int64_t processInfoThermalState();

}  // namespace korvantis
