#pragma once

#include <cstdint>
#include <functional>

namespace korvantis {

/// Facts about the machine that every record may need. Any thread.
struct ProcessInfoCalls {
  /// Installed memory in bytes; 0 when the system does not say.
  std::function<std::uint64_t()> physicalMemory;

  /// Logical processor cores, at least 1.
  std::function<std::int64_t()> processorCount;

  /// How hot the machine is (`NSProcessInfo` `thermalState`): 0 nominal, 1 fair, 2 serious,
  /// 3 critical.
  std::function<std::int64_t()> thermalState;
};

/// The operating system's own answers.
ProcessInfoCalls systemProcessInfoCalls();

}  // namespace korvantis
