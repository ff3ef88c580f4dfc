#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/DarwinTypes.h"

namespace korvantis {

/// The page counters that a `/proc/meminfo` text gives; those that Linux has no counterpart for
/// are 0. `zramBytes` is what compressed swap devices hold in memory. Wired is all that nothing
/// else accounts for, so that memory of drivers is in it. Absent without a total.
std::optional<vm_statistics64> parsePageCounters(std::string_view text, std::uint64_t zramBytes,
                                                 std::uint64_t pageSize);

/// Swap in the same text; absent without a total.
std::optional<xsw_usage> parseSwapUsage(std::string_view text, std::uint64_t pageSize);

/// The percent of memory that could still be had, in the same text; absent when it does not say.
std::optional<std::int32_t> parsePercentFree(std::string_view text);

/// The bytes that a compressed swap device occupies, in the text of its `mm_stat`; 0 when it does
/// not say.
std::uint64_t parseZramBytes(std::string_view text);

/// The kernel's pressure level: 1, 2 or 4. `stalls` is the text of `/proc/pressure/memory`, empty
/// where the kernel measures no stalls.
std::int32_t memoryPressureLevel(std::int32_t percentFree, std::string_view stalls);

}  // namespace korvantis
