#pragma once

#include <cstdint>

namespace korvantis {

/// Pid 0 is the kernel and pid 1 starts everything: whose a process is, they don't tell. From this
/// one on a pid is that of a process like any other.
inline constexpr std::int32_t firstOrdinaryPID = 2;

}  // namespace korvantis
