#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvantis {

/// The figure of one line of a `meminfo` text, such as "MemTotal", in bytes; 0 when there is no
/// such line or it holds no number of kilobytes.
std::uint64_t memoryInformationBytes(std::string_view text, std::string_view name);

/// Installed memory in bytes as `proc/meminfo` under `root` tells it; 0 when it does not. Any
/// thread.
std::uint64_t physicalMemoryBytes(const std::string& root);

}  // namespace korvantis
