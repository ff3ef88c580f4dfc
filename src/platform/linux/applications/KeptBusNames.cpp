#include "platform/linux/applications/KeptBusNames.h"

#include <chrono>
#include <utility>

namespace korvantis {
namespace {

constexpr double busyPace = 5.0;
constexpr double quietPace = 25.0;
constexpr auto longestWait = std::chrono::milliseconds(250);

}  // namespace

KeptBusNames::KeptBusNames(const ApplicationSources& applicationSources)
    : sources(applicationSources), work(applicationSources.worksInBackground) {}

void KeptBusNames::refresh(bool hasNewcomers,
                           std::function<bool(const std::string& name)> isWanted) {
  if (!sources.busNameOwners) return;
  const double now = sources.steadySeconds();
  {
    const std::lock_guard guard(lock);
    if (hasWaited && now - askedAt < (hasNewcomers ? busyPace : quietPace)) return;
    askedAt = now;
  }
  work.start([this, now, isWanted = std::move(isWanted)] {
    std::unordered_map<std::int32_t, std::vector<std::string>> held;
    for (BusNameHolder& holder : sources.busNameOwners(isWanted)) {
      held[holder.pid].push_back(std::move(holder.name));
    }
    const std::lock_guard guard(lock);
    names = std::move(held);
    answeredAt = now;
    hasAnswer = true;
    finished.notify_all();
  });
  std::unique_lock guard(lock);
  if (!hasAnswer && !hasWaited) {
    finished.wait_for(guard, longestWait, [this] { return hasAnswer; });
  }
  hasWaited = true;
}

std::vector<std::string> KeptBusNames::of(const ProcessIdentity& process) const {
  const double ticksPerSecond = static_cast<double>(sources.clockTicksPerSecond);
  const std::lock_guard guard(lock);
  const auto found = names.find(process.pid);
  if (found == names.end()) return {};
  // The bus knows numbers only: a process that began since then has inherited one.
  const bool wasThere = static_cast<double>(process.startTicks) / ticksPerSecond <= answeredAt;
  return wasThere ? found->second : std::vector<std::string>();
}

}  // namespace korvantis
