#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace korvantis {

/// What `/proc/PID/status` (or that of one thread) tells.
struct ProcessStatus {
  /// The process that a thread belongs to.
  std::int32_t threadGroup = 0;
  /// Real, effective, saved and file system owner.
  std::array<std::uint32_t, 4> users{};
  std::array<std::uint32_t, 4> groups{};
  /// Memory of its own that is in RAM or swapped out, in bytes; 0 where the kernel names none.
  std::uint64_t anonymousBytes = 0;
  std::uint64_t swapBytes = 0;
  /// How often this one thread went to sleep by itself.
  std::uint64_t voluntarySwitches = 0;

  bool operator==(const ProcessStatus&) const = default;
};

/// Reads such a text; absent when the thread group or the owner is missing or damaged.
std::optional<ProcessStatus> parseProcessStatus(std::string_view text);

}  // namespace korvantis
