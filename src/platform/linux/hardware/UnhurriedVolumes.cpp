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

UnhurriedVolumes::Answer* UnhurriedVolumes::Answers::of(const MountedFileSystem& mount) {
  const auto found = byPath.find(mount.path);
  return found == byPath.end() || found->second.mount != mount ? nullptr : &found->second;
}

bool UnhurriedVolumes::begin(const MountedFileSystem& mount) {
  const double now = monotonicSeconds();
  const std::scoped_lock guard(answers->lock);
  Answer& answer = answers->byPath[mount.path];
  if (answer.mount != mount) {
    answer = Answer();
    answer.mount = mount;
  }
  if (answer.asking || (answer.askedAt && now - *answer.askedAt < askPace)) return false;
  answer.asking = true;
  answer.askedAt = now;
  return true;
}

void UnhurriedVolumes::startAsking(const MountedFileSystem& mount) {
  const auto work = [shared = answers, question = ask, mount] {
    const auto values = question(mount.path);
    const std::scoped_lock guard(shared->lock);
    Answer* const answer = shared->of(mount);
    if (answer == nullptr) return;
    answer->asking = false;
    answer->isNew = true;
    answer->values = values;
  };
  try {
    std::thread(work).detach();
  } catch (const std::system_error&) {
    // No thread to be had: the next question tries again.
    const std::scoped_lock guard(answers->lock);
    if (Answer* const answer = answers->of(mount)) answer->asking = false;
  }
}

std::optional<VolumeResourceValues> UnhurriedVolumes::values(const MountedFileSystem& mount) {
  if (begin(mount)) startAsking(mount);
  const double now = monotonicSeconds();
  const std::scoped_lock guard(answers->lock);
  Answer* const answer = answers->of(mount);
  if (answer == nullptr) return std::nullopt;
  // Its age counts from the first tick that could know of it.
  if (std::exchange(answer->isNew, false)) answer->answeredAt = now;
  if (!answer->answeredAt || now - *answer->answeredAt > longestAge) return std::nullopt;
  return answer->values;
}

}  // namespace korvantis
