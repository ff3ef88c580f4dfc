#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/SysctlCalls.h"

namespace korvantis {

/// The first argument words, at most 8, of a `KERN_PROCARGS2` block: a little-endian count, the
/// executable path, zero bytes, then the words, each with a zero byte after it. Words that are
/// empty or no UTF-8 are passed over; a last word without its zero byte is none. Empty when the
/// block is malformed. Never reads beyond `block`. Any thread.
std::vector<std::string> processArgumentWords(std::span<const char> block);

/// The argument words of a process joined by one blank; `fallbackName` when its block can't be
/// read, is larger than 65536 bytes, or holds no word. Any thread.
std::string readProcessArguments(const SysctlCalls& calls, std::int32_t pid,
                                 const std::string& fallbackName);

}  // namespace korvantis
