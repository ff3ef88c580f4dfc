#pragma once

#include <cstdint>

namespace korvantis {

/// What makes a process itself: numbers are used again, but never twice within one clock tick.
struct ProcessIdentity {
  std::int32_t pid = 0;
  /// When it began, in clock ticks since the machine started.
  std::uint64_t startTicks = 0;

  bool operator==(const ProcessIdentity&) const = default;
};

}  // namespace korvantis
