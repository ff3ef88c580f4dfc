#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/SysctlCalls.h"

/// Typed reads of the kernel's named figures. Each is absent on failure. Any thread.
namespace korvantis::SysctlHelper {

/// A text: up to its first zero byte, without whitespace and newlines at either end, with bad
/// bytes repaired.
std::optional<std::string> string(const SysctlCalls& calls, const char* name);

/// A number of four bytes.
std::optional<std::int32_t> int32(const SysctlCalls& calls, const char* name);

/// A number of eight bytes.
std::optional<std::int64_t> int64(const SysctlCalls& calls, const char* name);

}  // namespace korvantis::SysctlHelper
