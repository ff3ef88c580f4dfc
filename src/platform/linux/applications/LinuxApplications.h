#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/PropertyValue.h"
#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/ProcessReading.h"
#include "platform/linux/applications/ApplicationRules.h"
#include "platform/linux/applications/KeptBusNames.h"
#include "platform/linux/applications/KeptEntryIndex.h"
#include "platform/linux/applications/KnownApplicationProcess.h"

namespace korvantis {

/// A running desktop application, as one of its processes.
struct ApplicationProcess {
  ProcessIdentity identity;
  EntryPointer entry;
};

/// Presents the desktop applications of this machine as bundles: it knows which process is part
/// of which, and shows each at a path inside of its application's bundle.
///
/// A process is looked at once. It is looked at again only when it has turned into another program
/// since, when the desktop entries have changed, and when it had only just begun, since it may not
/// have become what it is going to be. Any thread.
class LinuxApplications {
 public:
  explicit LinuxApplications(ApplicationSources applicationSources);
  LinuxApplications(const LinuxApplications&) = delete;
  LinuxApplications& operator=(const LinuxApplications&) = delete;
  ~LinuxApplications() = default;

  /// Looks at the processes that are new since the last time, parents first, and forgets those
  /// that have gone. `listed` are all there are.
  void see(const std::vector<ProcessIdentity>& listed);

  /// Where a process is shown to lie: in a bundle, below "/System" as a part of the desktop
  /// session, or where its executable really is; empty when that can't be told.
  std::string presentedPath(ProcessReading& reading);

  /// The rule by which a process was found to be part of an application; absent when it was not.
  std::optional<ApplicationRule> ruleOf(const ProcessIdentity& process) const;

  /// The path of a process's control group; empty when it is not known.
  std::string groupOf(const ProcessIdentity& process) const;

  /// The process of the application that a process's control group is named after: the main one
  /// in the same group, else the oldest one; one with pid 0 when there is none.
  ProcessIdentity groupApplication(const ProcessIdentity& process) const;

  /// The property list at a path inside of a bundle that is presented; absent for any other path.
  std::optional<PropertyMap> propertyList(const std::string& path) const;

  /// Whether the path is that of such a bundle or of something in it that is not on disk.
  bool presents(const std::string& path) const;

  /// The icon, by name or path, of the bundle at `path`; empty when there is none.
  std::string iconName(const std::string& path) const;

  /// The application whose root process has this pid; absent when it is no root process.
  std::optional<ApplicationProcess> rootWithPid(std::int32_t pid) const;

  /// One for each running instance of the application with this identifier: its main processes
  /// that none of its other processes has started.
  std::vector<ApplicationProcess> instances(const std::string& id) const;

  /// How many processes are known.
  std::size_t knownCount() const;

 private:
  std::shared_ptr<const DesktopEntryIndex> currentIndex();
  ProcessSurroundings surroundings(std::shared_ptr<const DesktopEntryIndex> index) const;
  std::vector<ProcessIdentity> markSeen(const std::vector<ProcessIdentity>& listed);
  std::string look(ProcessReading& reading, const std::shared_ptr<const DesktopEntryIndex>& index);
  void forgetOldBundles();
  bool isYoung(const ProcessIdentity& process) const;
  EntryPointer bundleAt(const std::string& path) const;
  template <typename Answer>
  Answer withKnown(std::int32_t pid, Answer (*answer)(const KnownApplicationProcess&)) const;

  const ApplicationSources sources;
  KeptEntryIndex entries{sources};
  KeptBusNames busNames{sources};
  ApplicationRules rules;

  /// Guards what follows; never held while something is read.
  mutable std::mutex lock;
  std::unordered_map<std::int32_t, KnownApplicationProcess> known;
  struct Bundle {
    EntryPointer entry;
    /// When a process was last shown in it, roughly.
    double usedAt = 0;
  };
  /// The bundles in which a process was shown within the last hour, so that a name outlives its
  /// entry. Runs of AppImages each have one of their own.
  std::unordered_map<std::string, Bundle> bundles;
  double forgotAt = 0;
  std::shared_ptr<const DesktopEntryIndex> lastIndex;
  std::uint64_t generation = 0;
  std::uint64_t round = 0;
};

}  // namespace korvantis
