#pragma once

#include <cstdint>
#include <string>

namespace korvantis {

/// One network interface and the bytes that have gone through it.
struct LinkCounters {
  std::string name;
  int index = 0;
  /// The kernel's `IFF_` bits.
  std::uint32_t flags = 0;
  std::uint64_t receivedBytes = 0;
  std::uint64_t sentBytes = 0;

  bool operator==(const LinkCounters&) const = default;
};

}  // namespace korvantis
