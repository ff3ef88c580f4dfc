#include "platform/linux/RememberedProcesses.h"

#include <unordered_set>
#include <utility>

namespace korvantis {

std::optional<RememberedProcess> RememberedProcesses::find(std::int32_t pid) const {
  const std::lock_guard guard(lock);
  const auto found = processes.find(pid);
  return found == processes.end() ? std::nullopt : std::optional(found->second);
}

std::optional<RememberedProcess> RememberedProcesses::find(const ProcessIdentity& identity) const {
  auto kept = find(identity.pid);
  if (kept && kept->startTicks != identity.startTicks) kept.reset();
  return kept;
}

std::vector<std::optional<RememberedProcess>> RememberedProcesses::findAll(
    const std::vector<std::int32_t>& pids) const {
  std::vector<std::optional<RememberedProcess>> kept;
  kept.reserve(pids.size());
  const std::lock_guard guard(lock);
  for (const std::int32_t pid : pids) {
    const auto found = processes.find(pid);
    kept.push_back(found == processes.end() ? std::nullopt : std::optional(found->second));
  }
  return kept;
}

void RememberedProcesses::markShown(const std::vector<ProcessIdentity>& identities) {
  const std::lock_guard guard(lock);
  for (const ProcessIdentity& identity : identities) {
    const auto found = processes.find(identity.pid);
    if (found != processes.end() && found->second.startTicks == identity.startTicks) {
      // A new heir is listed, but nobody is told of it before its second reading.
      found->second.wasShown = !found->second.isNewHeir;
    }
  }
}

bool RememberedProcesses::takeNewHeir(const ProcessIdentity& identity) {
  const std::lock_guard guard(lock);
  const auto found = processes.find(identity.pid);
  if (found == processes.end() || found->second.startTicks != identity.startTicks) return false;
  return std::exchange(found->second.isNewHeir, false);
}

void RememberedProcesses::forgetAllBut(const std::vector<std::int32_t>& pids,
                                       double checkedBefore) {
  const std::unordered_set<std::int32_t> present(pids.begin(), pids.end());
  const std::lock_guard guard(lock);
  std::erase_if(processes, [&](const auto& entry) {
    return entry.second.checkedAt < checkedBefore && !present.contains(entry.first);
  });
}

std::size_t RememberedProcesses::count() const {
  const std::lock_guard guard(lock);
  return processes.size();
}

}  // namespace korvantis
