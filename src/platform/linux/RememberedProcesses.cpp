#include "platform/linux/RememberedProcesses.h"

#include <algorithm>
#include <utility>

namespace korvantis {
namespace {

const ListingFacts& listingFacts(const RememberedProcess& process) {
  return process;
}

}  // namespace

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

std::vector<std::optional<ListingFacts>> RememberedProcesses::findAll(
    const std::vector<std::int32_t>& pids) const {
  std::vector<std::optional<ListingFacts>> known(pids.size());
  const std::lock_guard guard(lock);
  for (std::size_t index = 0; index < pids.size(); ++index) {
    const auto found = processes.find(pids[index]);
    if (found != processes.end()) known[index] = listingFacts(found->second);
  }
  return known;
}

std::shared_ptr<const ProcessFolder> RememberedProcesses::folder(std::int32_t pid) const {
  const std::lock_guard guard(lock);
  const auto found = processes.find(pid);
  return found == processes.end() ? nullptr : found->second.folder;
}

void RememberedProcesses::giveBackFolders() {
  const std::lock_guard guard(lock);
  for (auto& [pid, process] : processes) process.folder.reset();
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
  std::vector<std::int32_t> present = pids;
  std::sort(present.begin(), present.end());
  const std::lock_guard guard(lock);
  std::erase_if(processes, [&](const auto& entry) {
    return entry.second.checkedAt < checkedBefore &&
           !std::binary_search(present.begin(), present.end(), entry.first);
  });
}

std::size_t RememberedProcesses::count() const {
  const std::lock_guard guard(lock);
  return processes.size();
}

}  // namespace korvantis
