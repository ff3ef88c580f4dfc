#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace korvantis {

/// Facts about a process that seldom change and cost much to read, kept for a while.
struct CachedStaticProcInfo {
  /// Empty when unreadable.
  std::string executablePath;
  /// Argument words joined by one blank, or the short name.
  std::string arguments;
  /// The process that the system holds responsible, else the process itself.
  std::int32_t responsiblePID = 0;
  std::optional<std::string> workingDirectory;
  /// Seconds since 1970 when they were read.
  double lastUpdated = 0;

  bool operator==(const CachedStaticProcInfo&) const = default;
};

}  // namespace korvantis
