#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/ProcessSources.h"
#include "platform/linux/RememberedProcesses.h"

namespace korvantis {

/// Makes the list of pids: no kernel threads; the user's own processes first and the newest of
/// them before older ones, so that a cap never cuts what the user has just started.
class ProcessListing {
 public:
  /// What is known of a process is read again when it is this old: its number may have been given
  /// to another one. Whoever reads the process in between makes that unnecessary.
  static constexpr double knowledgeLife = 25.0;

  /// Both must outlive the listing.
  ProcessListing(const ProcessSources& processSources, RememberedProcesses& rememberedProcesses)
      : sources(processSources), remembered(rememberedProcesses) {}

  /// The processes of now, at most `limit`; empty when `/proc` can't be read. Any thread.
  std::vector<ProcessIdentity> list(std::size_t limit) const;

 private:
  struct Candidate;

  std::vector<Candidate> candidates(const std::vector<std::int32_t>& pids, double now) const;

  const ProcessSources& sources;
  RememberedProcesses& remembered;
};

class ProcessReading;

/// What decides about listing a process, read at `now`. Absent when its owner can't be told, it is
/// a thread of another process, or it has gone.
std::optional<ListingFacts> listingFacts(ProcessReading& reading, double now);

}  // namespace korvantis
