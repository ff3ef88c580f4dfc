#include "platform/linux/RememberedProcesses.h"

#include <algorithm>
#include <utility>

namespace korvantis {
namespace {

const ListingFacts& listingFacts(const RememberedProcess& process) {
  return process;
}

using Folders = std::vector<std::shared_ptr<const ProcessFolder>>;

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
  Folders former;  // closed after the lock
  const std::lock_guard guard(lock);
  for (auto& [pid, process] : processes) former.push_back(std::exchange(process.folder, nullptr));
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

bool RememberedProcesses::show(const ProcessIdentity& identity, const ListingFacts& facts,
                               std::shared_ptr<const ProcessFolder> folder) {
  bool isHidden = false;
  update(identity, [&](RememberedProcess& process) {
    process.setListingFacts(facts);
    // Swapped, so that a descriptor of before is closed after the lock.
    if (folder) process.folder.swap(folder);
    isHidden = std::exchange(process.isNewHeir, false);
    process.wasShown = process.wasShown || !isHidden;
  });
  return isHidden;
}

void RememberedProcesses::forgetAllBut(const std::vector<std::int32_t>& pids,
                                       double checkedBefore) {
  std::vector<std::int32_t> present = pids;
  std::sort(present.begin(), present.end());
  Folders former;  // closed after the lock
  const std::lock_guard guard(lock);
  std::erase_if(processes, [&](auto& entry) {
    auto& [pid, process] = entry;
    const bool isGone = process.checkedAt < checkedBefore &&
                        !std::binary_search(present.begin(), present.end(), pid);
    if (isGone) former.push_back(std::move(process.folder));
    return isGone;
  });
}

std::size_t RememberedProcesses::count() const {
  const std::lock_guard guard(lock);
  return processes.size();
}

}  // namespace korvantis
