#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/linux/DescriptorWalk.h"
#include "platform/linux/ProcessDiskBytes.h"
#include "platform/linux/ProcessFolder.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/ProcessStatus.h"

namespace korvantis {

/// What decides whether and where a process is listed.
struct ListingFacts {
  std::uint64_t startTicks = 0;
  std::uint32_t userID = 0;
  bool isKernelThread = false;
  /// When these facts were last read, in steady seconds.
  double checkedAt = -std::numeric_limits<double>::infinity();

  bool operator==(const ListingFacts&) const = default;
};

/// The figures of a process together with what shows whether they still hold: one that has not
/// run since has the same CPU time.
struct StandingFigures {
  /// Read before the rest was.
  std::uint64_t cpuNanoseconds = 0;
  std::uint64_t residentPages = 0;
  /// The name as it was shown.
  std::string name;
  ProcessStatus status;
  ProcessDiskBytes disk;
  /// When it must be read again all the same, in steady seconds.
  double dueAt = 0;

  bool operator==(const StandingFigures&) const = default;
};

/// The arguments of a process and its CPU time before they were read.
struct StandingArguments {
  std::uint64_t cpuNanoseconds = 0;
  std::string bytes;

  bool operator==(const StandingArguments&) const = default;
};

/// What is kept of a process between calls.
struct RememberedProcess : ListingFacts {
  void setListingFacts(const ListingFacts& facts) { static_cast<ListingFacts&>(*this) = facts; }

  /// Whether somebody has been told of it.
  bool wasShown = false;
  /// It has the number of a process that somebody had been told of, and has not been told of
  /// itself.
  bool isNewHeir = false;
  /// The last disk counters that could be read.
  ProcessDiskBytes diskBytes;
  /// The sum of voluntary switches, and when it is due again.
  std::uint64_t wakeups = 0;
  double wakeupsDueAt = -std::numeric_limits<double>::infinity();
  /// CPU time before the sum was made.
  std::optional<std::uint64_t> wakeupsCpuNanoseconds;
  /// Absent until it has been read in full.
  std::optional<StandingFigures> standing;
  /// Null when none are kept.
  std::shared_ptr<const StandingArguments> arguments;
  /// The last walk over its descriptors; null when none is kept.
  std::shared_ptr<const DescriptorWalk> walk;
  /// Its open folder; null when none is kept.
  std::shared_ptr<const ProcessFolder> folder;
  /// The last responsible process that was found for it; pid 0 for none.
  ProcessIdentity responsible;
};

/// What is known of processes between calls, one for each number. Any thread.
class RememberedProcesses {
 public:
  /// What is kept of the process that was last seen under this number.
  std::optional<RememberedProcess> find(std::int32_t pid) const;

  /// What is kept of exactly this process.
  std::optional<RememberedProcess> find(const ProcessIdentity& identity) const;

  /// What is known of whoever was last seen under each of these numbers.
  std::vector<std::optional<ListingFacts>> findAll(const std::vector<std::int32_t>& pids) const;

  /// The open folder of the process that was last seen under this number; null when none is kept.
  std::shared_ptr<const ProcessFolder> folder(std::int32_t pid) const;

  /// Lets go of all open folders.
  void giveBackFolders();

  /// Hands what is kept of exactly this process to `look`, which must not call back; says whether
  /// there is anything.
  template <typename Look>
  bool visit(const ProcessIdentity& identity, const Look& look) const {
    const std::lock_guard guard(lock);
    const auto found = processes.find(identity.pid);
    if (found == processes.end()) return false;
    if (found->second.startTicks != identity.startTicks) return false;
    look(found->second);
    return true;
  }

  /// Changes what is kept of this process through `change`, which must not call back. A process
  /// that began later takes the place of an earlier one of its number, never the other way round:
  /// of two overlapping passes the slower one must not bring a dead process back.
  template <typename Change>
  void update(const ProcessIdentity& identity, const Change& change) {
    std::shared_ptr<const ProcessFolder> former;  // closed after the lock
    const std::lock_guard guard(lock);
    const auto [entry, isNew] = processes.try_emplace(identity.pid);
    RememberedProcess& kept = entry->second;
    if (!isNew && kept.startTicks > identity.startTicks) return;
    if (isNew || kept.startTicks < identity.startTicks) {
      const bool isNewHeir = kept.wasShown || kept.isNewHeir;
      former.swap(kept.folder);
      kept = RememberedProcess{};
      kept.startTicks = identity.startTicks;
      kept.isNewHeir = isNewHeir;
    }
    change(kept);
  }

  /// Marks processes as shown, each under the number and start that it was found with.
  void markShown(const std::vector<ProcessIdentity>& identities);

  /// Remembers `facts` of a process that is about to be shown, and its open folder where there is
  /// one to keep. Says whether it must stay hidden: it has just come by a number that somebody
  /// knows as another's. That is said once; the next time it is shown.
  bool show(const ProcessIdentity& identity, const ListingFacts& facts,
            std::shared_ptr<const ProcessFolder> folder);

  /// Forgets every process whose number is not in `pids` and that was last checked before
  /// `checkedBefore` (one that came since the numbers were read is not in them yet).
  void forgetAllBut(const std::vector<std::int32_t>& pids, double checkedBefore);

  /// How many processes are kept.
  std::size_t count() const;

 private:
  mutable std::mutex lock;
  std::unordered_map<std::int32_t, RememberedProcess> processes;
};

}  // namespace korvantis
