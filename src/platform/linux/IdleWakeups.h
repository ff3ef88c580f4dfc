#pragma once

#include <cstdint>

#include "platform/linux/ProcessReading.h"
#include "platform/linux/ProcessSources.h"
#include "platform/linux/RememberedProcesses.h"

namespace korvantis {

/// Counts how often the threads of a process woke up by themselves. The kernel tells it for each
/// thread only, so the sum is made at a slow pace and held in between, and not made again while
/// the process sleeps. It never falls, although threads that end take their share with them.
class IdleWakeups {
 public:
  /// Least time between two sums of one process, in seconds. The first sum of a process is held
  /// for longer, by up to as much again, so that the sums of many processes that were first seen
  /// together don't fall due together for ever.
  static constexpr std::int32_t pace = 25;

  /// Both must outlive it.
  IdleWakeups(const ProcessSources& processSources, RememberedProcesses& rememberedProcesses)
      : sources(processSources), remembered(rememberedProcesses) {}

  /// The count for a process whose `status` was just read. Any thread.
  std::uint64_t count(const ProcessReading& reading, const ProcessStatus& status) const;

 private:
  const ProcessSources& sources;
  RememberedProcesses& remembered;
};

}  // namespace korvantis
