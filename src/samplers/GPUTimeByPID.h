#pragma once

#include <cstdint>
#include <unordered_map>

namespace korvantis {

/// GPU time that each process has used since it began, in nanoseconds, by pid. A process that
/// never touched the GPU has no entry.
using GPUTimeByPID = std::unordered_map<std::int32_t, std::uint64_t>;

}  // namespace korvantis
