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

std::optional<ListingFacts> listingFacts(ProcessReading& reading, double now) {
  ListingFacts facts{.startTicks = reading.identity().startTicks,
                     .isKernelThread = reading.stat().isKernelThread,
                     .checkedAt = now};
  if (facts.isKernelThread) return facts;
  const auto& status = reading.status();
  if (!status || status->threadGroup != reading.identity().pid) return std::nullopt;
  facts.userID = status->users[1];
  return facts;
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
      facts = reading ? listingFacts(*reading, now) : std::nullopt;
      if (!facts) continue;
      remembered.update(reading->identity(),
                        [&](RememberedProcess& kept) { kept.setListingFacts(*facts); });
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
