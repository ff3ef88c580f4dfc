#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/SysctlCalls.h"

namespace korvantis {

/// Bytes that network interfaces have received and sent since they came up.
struct InterfaceCounters {
  std::uint64_t inBytes = 0;
  std::uint64_t outBytes = 0;

  bool operator==(const InterfaceCounters&) const = default;
};

/// The sums over the `if_msghdr2` messages of an interface list, of the interfaces that are up
/// and not loopback. Bytes from outside: the walk ends at a message without a length or where no
/// whole header is left, and a message that is cut short is passed over.
InterfaceCounters sumInterfaceCounters(std::span<const std::byte> messages);

/// The sums over the system's interface list now; absent when it gives none. Any thread.
std::optional<InterfaceCounters> readInterfaceCounters(const SysctlCalls& calls);

}  // namespace korvantis
