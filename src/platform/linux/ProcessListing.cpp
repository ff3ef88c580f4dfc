#include "platform/linux/ProcessListing.h"

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <tuple>

#include "platform/linux/NumberedEntries.h"
#include "platform/linux/ProcessReading.h"

namespace korvantis {

/// A process that may be listed, with what decides its place.
struct ProcessListing::Candidate {
  ProcessIdentity identity;
  bool isOwn = false;

  bool operator<(const Candidate& other) const {
    return std::tuple(isOwn, identity.startTicks, identity.pid) >
           std::tuple(other.isOwn, other.identity.startTicks, other.identity.pid);
  }
};

bool rememberFacts(ProcessReading& reading, RememberedProcesses& remembered, double now) {
  const bool isKernelThread = reading.stat().isKernelThread;
  std::uint32_t userID = 0;
  if (!isKernelThread) {
    const auto& status = reading.status();
    if (!status || status->threadGroup != reading.identity().pid) return false;
    userID = status->users[1];
  }
  remembered.update(reading.identity(), [&](RememberedProcess& kept) {
    kept.isKernelThread = isKernelThread;
    kept.userID = userID;
    kept.checkedAt = now;
  });
  return true;
}

std::vector<ProcessListing::Candidate> ProcessListing::candidates(
    const std::vector<std::int32_t>& pids, double now) const {
  std::vector<Candidate> candidates;
  candidates.reserve(pids.size());
  const auto known = remembered.findAll(pids);
  for (std::size_t index = 0; index < pids.size(); ++index) {
    std::optional<ListingFacts> facts = known[index];
    if (!facts || now - facts->checkedAt >= knowledgeLife) {
      const auto reading = ProcessReading::open(sources.root, pids[index]);
      if (!reading || !rememberFacts(*reading, remembered, now)) continue;
      facts = remembered.findAll({pids[index]}).front();
      if (facts && facts->startTicks != reading->identity().startTicks) continue;
    }
    if (!facts || facts->isKernelThread) continue;
    candidates.push_back({{pids[index], facts->startTicks}, facts->userID == sources.userID});
  }
  return candidates;
}

std::vector<ProcessIdentity> ProcessListing::list(std::size_t limit) const {
  const double now = sources.steadySeconds();
  const auto numbers = numberedEntries(AT_FDCWD, sources.root + "/proc");
  if (!numbers) return {};
  std::vector<Candidate> found = candidates(*numbers, now);
  remembered.forgetAllBut(*numbers, now);
  std::sort(found.begin(), found.end());
  if (found.size() > limit) found.resize(limit);
  std::vector<ProcessIdentity> identities;
  identities.reserve(found.size());
  for (const Candidate& candidate : found) identities.push_back(candidate.identity);
  remembered.markShown(identities);
  return identities;
}

}  // namespace korvantis
