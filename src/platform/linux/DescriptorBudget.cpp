#include "platform/linux/DescriptorBudget.h"

#include <algorithm>
#include <sys/resource.h>
#include <utility>

namespace korvantis {
namespace {

/// Four for each of the 1024 processes that are ever listed, and as many for all else.
constexpr rlim_t wantedDescriptors = 8192;
constexpr rlim_t leastDescriptors = 256;

}  // namespace

bool DescriptorBudget::take(int count) {
  if ((open += count) <= most) return true;
  open -= count;
  return false;
}

int raiseDescriptorLimit() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return leastDescriptors;
  const rlim_t raised = std::min(limit.rlim_max, wantedDescriptors);
  if (limit.rlim_cur < raised) {
    const rlim_t before = std::exchange(limit.rlim_cur, raised);
    if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) limit.rlim_cur = before;
  }
  return static_cast<int>(std::min(limit.rlim_cur, wantedDescriptors));
}

}  // namespace korvantis
