#include "platform/linux/IdleWakeups.h"

#include <algorithm>
#include <cmath>

namespace korvantis {

std::uint64_t IdleWakeups::count(const ProcessReading& reading, const ProcessStatus& status) const {
  const double now = sources.steadySeconds();
  const auto kept = remembered.find(reading.identity());
  if (kept && now < kept->wakeupsDueAt) return kept->wakeups;
  // With a single thread the sum is what was just read.
  const bool isSingle = reading.stat().threadCount == 1;
  std::uint64_t sum = status.voluntarySwitches;
  if (!isSingle) sum = reading.voluntarySwitches().value_or(sum);
  const std::int32_t pid = reading.identity().pid;
  remembered.update(reading.identity(), [&](RememberedProcess& process) {
    const bool isFirst = std::isinf(process.wakeupsDueAt);
    process.wakeups = sum = std::max(sum, process.wakeups);
    process.wakeupsDueAt = now + pace + (isFirst ? pid % pace : 0);
  });
  return sum;
}

}  // namespace korvantis
