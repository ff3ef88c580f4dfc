#include "platform/linux/RememberedNames.h"

#include <utility>

namespace korvantis {
namespace {

constexpr double memorySeconds = 25.0;

}  // namespace

RememberedNames::RememberedNames(std::function<double()> seconds, Look lookAround)
    : monotonicSeconds(std::move(seconds)), look(std::move(lookAround)) {}

std::vector<std::string> RememberedNames::about(const std::vector<std::string>& names) {
  const double now = monotonicSeconds();
  {
    const std::scoped_lock guard(lock);
    if (lookedAt && now - *lookedAt < memorySeconds && names == lastNames) return lastAnswer;
  }
  std::vector<std::string> answer = look(names);
  const std::scoped_lock guard(lock);
  lookedAt = now;
  lastNames = names;
  lastAnswer = answer;
  return answer;
}

}  // namespace korvantis
