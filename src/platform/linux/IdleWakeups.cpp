#include "platform/linux/IdleWakeups.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvantis {

std::uint64_t IdleWakeups::count(const ProcessReading& reading, const ProcessStatus& status) const {
  const double now = sources.steadySeconds();
  const auto cpu = reading.cpuNanoseconds;
  double dueAt = -std::numeric_limits<double>::infinity();
  std::uint64_t held = 0;
  bool hasSlept = false;
  remembered.visit(reading.identity(), [&](const RememberedProcess& process) {
    dueAt = process.wakeupsDueAt;
    held = process.wakeups;
    hasSlept = cpu && process.wakeupsCpuNanoseconds == cpu;
  });
  if (now < dueAt || hasSlept) return held;
  // With a single thread the sum is what was just read.
  const bool isSingle = reading.stat().threadCount == 1;
  std::uint64_t sum = status.voluntarySwitches;
  if (!isSingle) sum = reading.voluntarySwitches().value_or(sum);
  const std::int32_t pid = reading.identity().pid;
  remembered.update(reading.identity(), [&](RememberedProcess& process) {
    const bool isFirst = std::isinf(process.wakeupsDueAt);
    process.wakeups = sum = std::max(sum, process.wakeups);
    process.wakeupsDueAt = now + pace + (isFirst ? pid % pace : 0);
    process.wakeupsCpuNanoseconds = cpu;
  });
  return sum;
}

}  // namespace korvantis
