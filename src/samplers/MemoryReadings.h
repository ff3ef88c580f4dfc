#pragma once

#include <cstdint>

#include "platform/MachHostCalls.h"
#include "platform/SysctlCalls.h"
#include "samplers/MemoryFigures.h"

namespace korvantis {

/// What memory is used for now; fixed shares of `physicalMemory` when the system does not say.
/// Any thread.
MemoryFigures readMemoryFigures(const MachHostCalls& calls, std::uint64_t physicalMemory);

/// Swap in use, in bytes; 0 when the system does not say. Any thread.
std::uint64_t readSwapUsedBytes(const SysctlCalls& calls);

}  // namespace korvantis
