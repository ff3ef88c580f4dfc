#include "platform/linux/hardware/UnhurriedVolumes.h"

#include <system_error>
#include <thread>
#include <utility>

namespace korvantis {
namespace {

constexpr double askPace = 10.0;
constexpr double longestAge = 30.0;

}  // namespace

UnhurriedVolumes::UnhurriedVolumes(std::function<double()> seconds, Ask question)
    : monotonicSeconds(std::move(seconds)), ask(std::move(question)) {}

bool UnhurriedVolumes::begin(const std::string& path) {
  const double now = monotonicSeconds();
  const std::scoped_lock guard(answers->lock);
  Answer& answer = answers->byPath[path];
  if (answer.asking || (answer.askedAt && now - *answer.askedAt < askPace)) return false;
  answer.asking = true;
  answer.askedAt = now;
  return true;
}

void UnhurriedVolumes::startAsking(const std::string& path) {
  const auto work = [shared = answers, question = ask, path] {
    const auto values = question(path);
    const std::scoped_lock guard(shared->lock);
    Answer& answer = shared->byPath[path];
    answer.asking = false;
    answer.isNew = true;
    answer.values = values;
  };
  try {
    std::thread(work).detach();
  } catch (const std::system_error&) {
    // No thread to be had: the next question tries again.
    const std::scoped_lock guard(answers->lock);
    answers->byPath[path].asking = false;
  }
}

std::optional<VolumeResourceValues> UnhurriedVolumes::values(const std::string& path) {
  if (begin(path)) startAsking(path);
  const double now = monotonicSeconds();
  const std::scoped_lock guard(answers->lock);
  Answer& answer = answers->byPath[path];
  // Its age counts from the first tick that could know of it.
  if (std::exchange(answer.isNew, false)) answer.answeredAt = now;
  if (!answer.answeredAt || now - *answer.answeredAt > longestAge) return std::nullopt;
  return answer.values;
}

}  // namespace korvantis
