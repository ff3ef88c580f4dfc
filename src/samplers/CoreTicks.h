#pragma once

#include <cstdint>

namespace korvantis {

/// The time that one processor core has spent in each of four ways since it started, in ticks.
struct CoreTicks {
  std::uint64_t user = 0;
  std::uint64_t system = 0;
  std::uint64_t idle = 0;
  std::uint64_t nice = 0;

  bool operator==(const CoreTicks&) const = default;
};

}  // namespace korvantis
