#pragma once

#include <cstdint>

namespace korvantis {

/// This machine's installed memory in bytes, asked of the system at each call; what a record
/// shows until a sampler has filled it. Any thread.
std::uint64_t machineMemoryBytes();

}  // namespace korvantis
