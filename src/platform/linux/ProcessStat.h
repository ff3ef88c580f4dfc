#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// What `/proc/PID/stat` tells of a process.
struct ProcessStat {
  std::int32_t pid = 0;
  /// The name as the process has set it, any bytes.
  std::string name;
  char state = 0;
  std::int32_t parent = 0;
  std::int32_t group = 0;
  std::int32_t session = 0;
  bool isKernelThread = false;
  /// CPU time in user and in system mode, in clock ticks.
  std::uint64_t userTicks = 0;
  std::uint64_t systemTicks = 0;
  std::int32_t nice = 0;
  std::uint64_t threadCount = 0;
  /// When it began, in clock ticks since the machine started.
  std::uint64_t startTicks = 0;
  /// Memory that is in RAM, in pages; 0 when the text ends before it.
  std::uint64_t residentPages = 0;

  /// Whether it has ended and only waits for its parent to take note. Its first thread alone may
  /// have ended long before the others.
  bool hasEnded() const { return (state == 'Z' || state == 'X') && threadCount <= 1; }

  bool operator==(const ProcessStat&) const = default;
};

/// Reads such a text; absent when it is cut short or no such text.
std::optional<ProcessStat> parseProcessStat(std::string_view text);

}  // namespace korvantis
