#include "platform/linux/applications/LinuxApplications.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "platform/linux/applications/BundlePaths.h"
#include "platform/linux/applications/ControlGroupName.h"
#include "platform/linux/applications/KnownPrograms.h"

namespace korvantis {
namespace {

// By then a new process has become the program that it was made for, and its desktop has sorted
// it into the control group that is meant for it.
constexpr double youth = 3.0;

constexpr std::string_view bundleExtension = ".app";

constexpr double forgettingPace = 600.0;
constexpr double longestUnused = 3600.0;

}  // namespace

LinuxApplications::LinuxApplications(ApplicationSources applicationSources)
    : sources(std::move(applicationSources)) {}

std::shared_ptr<const DesktopEntryIndex> LinuxApplications::currentIndex() {
  auto index = entries.current();
  const std::lock_guard guard(lock);
  if (index != lastIndex) {
    lastIndex = index;
    ++generation;
  }
  return index;
}

std::vector<ProcessIdentity> LinuxApplications::markSeen(
    const std::vector<ProcessIdentity>& listed) {
  std::vector<ProcessIdentity> newcomers;
  const std::lock_guard guard(lock);
  ++round;
  std::size_t seen = 0;
  for (const ProcessIdentity& process : listed) {
    const auto found = known.find(process.pid);
    if (found != known.end() && found->second.startTicks == process.startTicks) {
      found->second.round = round;
      ++seen;
    } else {
      newcomers.push_back(process);
    }
  }
  if (seen != known.size()) {
    std::erase_if(known, [this](const auto& entry) { return entry.second.round != round; });
  }
  return newcomers;
}

void LinuxApplications::see(const std::vector<ProcessIdentity>& listed) {
  std::vector<ProcessIdentity> newcomers = markSeen(listed);
  forgetOldBundles();
  const auto index = currentIndex();
  busNames.refresh(!newcomers.empty(),
                   [index](const std::string& name) { return index->withId(name) != nullptr; });
  std::sort(newcomers.begin(), newcomers.end(), [](const auto& first, const auto& second) {
    return std::pair(first.startTicks, first.pid) < std::pair(second.startTicks, second.pid);
  });
  for (const ProcessIdentity& process : newcomers) {
    const auto reading = ProcessReading::open(sources.root, process.pid);
    if (reading && reading->identity() == process) look(*reading, index);
  }
}

std::string LinuxApplications::presentedPath(ProcessReading& reading) {
  const auto index = currentIndex();
  const std::string executable = reading.executablePath();
  const auto held = busNames.of(reading.identity());
  {
    const std::lock_guard guard(lock);
    const auto found = known.find(reading.identity().pid);
    if (found != known.end()) {
      const KnownApplicationProcess& process = found->second;
      const bool isSame = process.startTicks == reading.identity().startTicks &&
                          process.executable == executable && process.name == reading.stat().name;
      const bool hasNews =
          process.wasYoung || process.generation != generation || (!process.entry && !held.empty());
      if (isSame && !hasNews) return process.presentedPath;
    }
  }
  return look(reading, index);
}

std::string LinuxApplications::look(ProcessReading& reading,
                                    const std::shared_ptr<const DesktopEntryIndex>& index) {
  ProcessEvidence evidence(reading);
  const auto match = rules.find(evidence, surroundings(index));
  const bool isOfSession = KnownPrograms::isSessionComponent(evidence.program());
  KnownApplicationProcess process;
  process.startTicks = evidence.identity().startTicks;
  process.executable = evidence.executable();
  process.name = evidence.name();
  process.parent = evidence.parent();
  process.group = evidence.group().path;
  process.wasYoung = isYoung(evidence.identity());
  if (!isOfSession) process.groupEntry = ControlGroupName::named(evidence, *index);
  if (match) {
    process.entry = match->entry;
    process.rule = match->rule;
    process.isMain = BundlePaths::isMain(*match, evidence);
    process.presentedPath = BundlePaths::executable(*match->entry, process.isMain, evidence);
  } else if (isOfSession || evidence.group().isSession) {
    process.presentedPath = BundlePaths::sessionComponent(evidence);
  } else {
    process.presentedPath = evidence.executable();
  }
  std::string path = process.presentedPath;
  const double now = sources.steadySeconds();
  const std::lock_guard guard(lock);
  // Judged by an index that has been replaced meanwhile, it is looked at again.
  process.generation = index == lastIndex ? generation : 0;
  process.round = round;
  if (process.entry) {
    bundles.insert_or_assign(process.entry->bundlePath, Bundle{process.entry, now});
  }
  known.insert_or_assign(evidence.identity().pid, std::move(process));
  return path;
}

void LinuxApplications::forgetOldBundles() {
  const double now = sources.steadySeconds();
  const std::lock_guard guard(lock);
  if (now - forgotAt < forgettingPace) return;
  forgotAt = now;
  for (const auto& [pid, process] : known) {
    if (process.entry) bundles[process.entry->bundlePath] = {process.entry, now};
  }
  std::erase_if(bundles,
                [now](const auto& bundle) { return now - bundle.second.usedAt > longestUnused; });
}

bool LinuxApplications::isYoung(const ProcessIdentity& process) const {
  const double began =
      static_cast<double>(process.startTicks) / static_cast<double>(sources.clockTicksPerSecond);
  return sources.steadySeconds() - began < youth;
}

template <typename Answer>
Answer LinuxApplications::withKnown(std::int32_t pid,
                                    Answer (*answer)(const KnownApplicationProcess&)) const {
  const std::lock_guard guard(lock);
  const auto found = known.find(pid);
  return found == known.end() ? Answer{} : answer(found->second);
}

ProcessSurroundings LinuxApplications::surroundings(
    std::shared_ptr<const DesktopEntryIndex> index) const {
  ProcessSurroundings around;
  around.root = sources.root;
  around.index = std::move(index);
  around.applicationOf = [this](std::int32_t pid) {
    return withKnown<EntryPointer>(
        pid, [](const KnownApplicationProcess& process) { return process.entry; });
  };
  around.groupOf = [this](std::int32_t pid) {
    return withKnown<std::string>(
        pid, [](const KnownApplicationProcess& process) { return process.group; });
  };
  around.parentOf = [this](std::int32_t pid) {
    return withKnown<std::int32_t>(
        pid, [](const KnownApplicationProcess& process) { return process.parent; });
  };
  around.busNamesOf = [this](const ProcessIdentity& process) { return busNames.of(process); };
  return around;
}

std::optional<ApplicationRule> LinuxApplications::ruleOf(const ProcessIdentity& process) const {
  const std::lock_guard guard(lock);
  const auto found = known.find(process.pid);
  const bool isKnown = found != known.end() && found->second.startTicks == process.startTicks;
  return isKnown ? found->second.rule : std::nullopt;
}

std::string LinuxApplications::groupOf(const ProcessIdentity& process) const {
  const std::lock_guard guard(lock);
  const auto found = known.find(process.pid);
  const bool isKnown = found != known.end() && found->second.startTicks == process.startTicks;
  return isKnown ? found->second.group : std::string();
}

ProcessIdentity LinuxApplications::groupApplication(const ProcessIdentity& process) const {
  const std::lock_guard guard(lock);
  const auto found = known.find(process.pid);
  if (found == known.end() || found->second.startTicks != process.startTicks) return {};
  const KnownApplicationProcess& member = found->second;
  if (!member.groupEntry) return {};
  const KnownApplicationProcess* best = nullptr;
  std::int32_t bestPid = 0;
  const auto rank = [&member](const KnownApplicationProcess& other, std::int32_t pid) {
    return std::tuple(other.group != member.group, other.startTicks, pid);
  };
  for (const auto& [pid, other] : known) {
    if (!other.isMain || other.entry->id != member.groupEntry->id) continue;
    if (best != nullptr && rank(*best, bestPid) < rank(other, pid)) continue;
    best = &other;
    bestPid = pid;
  }
  return best == nullptr ? ProcessIdentity{} : ProcessIdentity{bestPid, best->startTicks};
}

EntryPointer LinuxApplications::bundleAt(const std::string& path) const {
  const std::lock_guard guard(lock);
  const auto found = bundles.find(path);
  if (found != bundles.end()) return found->second.entry;
  return lastIndex ? lastIndex->withBundle(path) : nullptr;
}

std::optional<PropertyMap> LinuxApplications::propertyList(const std::string& path) const {
  constexpr std::string_view place = "/Contents/Info.plist";
  if (!path.ends_with(place)) return std::nullopt;
  const EntryPointer entry = bundleAt(path.substr(0, path.size() - place.size()));
  return entry ? std::optional(BundlePaths::propertyList(*entry)) : std::nullopt;
}

bool LinuxApplications::presents(const std::string& path) const {
  const std::size_t extension = path.find(bundleExtension);
  if (extension == std::string::npos) return false;
  const std::size_t end = extension + bundleExtension.size();
  return BundlePaths::holds(std::string_view(path).substr(end)) &&
         bundleAt(path.substr(0, end)) != nullptr;
}

std::string LinuxApplications::iconName(const std::string& path) const {
  const EntryPointer entry = bundleAt(path);
  return entry ? entry->entry.icon : std::string();
}

std::optional<ApplicationProcess> LinuxApplications::rootWithPid(std::int32_t pid) const {
  const std::lock_guard guard(lock);
  const auto found = known.find(pid);
  if (found == known.end() || !found->second.entry) return std::nullopt;
  const KnownApplicationProcess& process = found->second;
  const auto isBefore = [](const KnownApplicationProcess& first, std::int32_t firstPid,
                           const KnownApplicationProcess& second, std::int32_t secondPid) {
    return std::pair(!first.isMain, firstPid) < std::pair(!second.isMain, secondPid);
  };
  for (const auto& [number, other] : known) {
    const bool isSame = other.entry && other.entry->bundlePath == process.entry->bundlePath;
    if (isSame && isBefore(other, number, process, pid)) return std::nullopt;
  }
  return ApplicationProcess{{pid, process.startTicks}, process.entry};
}

std::vector<ApplicationProcess> LinuxApplications::instances(const std::string& id) const {
  std::vector<ApplicationProcess> running;
  const std::lock_guard guard(lock);
  const auto isOfApplication = [&id](const KnownApplicationProcess& process) {
    return process.entry && process.entry->identifier == id;
  };
  const bool hasMain = std::any_of(known.begin(), known.end(), [&](const auto& entry) {
    return isOfApplication(entry.second) && entry.second.isMain;
  });
  for (const auto& [pid, process] : known) {
    if (!isOfApplication(process) || process.isMain != hasMain) continue;
    const auto parent = known.find(process.parent);
    const bool wasStartedByItself = parent != known.end() && isOfApplication(parent->second) &&
                                    parent->second.isMain == hasMain;
    if (!wasStartedByItself) running.push_back({{pid, process.startTicks}, process.entry});
  }
  std::sort(running.begin(), running.end(), [](const auto& first, const auto& second) {
    return first.identity.pid < second.identity.pid;
  });
  return running;
}

std::size_t LinuxApplications::knownCount() const {
  const std::lock_guard guard(lock);
  return known.size();
}

}  // namespace korvantis
