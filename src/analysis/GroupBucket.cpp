#include "analysis/GroupBucket.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

#include "analysis/HelperRoles.h"
#include "core/EnumerationTable.h"
#include "core/HelperShare.h"

namespace korvantis {

namespace {

/// A process and the role that it got; the record itself is copied only once, at its final place.
struct RankedMember {
  const ProcessSample* process;
  HelperRole role;
};

void addFigures(AppGroup& group, const ProcessSample& process) {
  group.cpuPercent += process.cpuPercent;
  group.gpuPercent += process.gpuPercent;
  group.memoryBytes += process.memoryBytes;
  group.networkInBytesPerSec += process.networkInBytesPerSec;
  group.networkOutBytesPerSec += process.networkOutBytesPerSec;
  group.diskReadBytesPerSec += process.diskReadBytesPerSec;
  group.diskWriteBytesPerSec += process.diskWriteBytesPerSec;
  group.energyWatts += process.energyWatts;
}

/// One row for each role that a member has, in the order of the roles.
std::vector<HelperShare> sharesOf(const std::vector<RankedMember>& members) {
  constexpr auto roles = allCases<HelperRole>();
  std::array<HelperShare, roles.size()> shares;
  for (const auto& [process, role] : members) {
    HelperShare& share = shares[static_cast<std::size_t>(role)];
    share.role = role;
    share.processCount += 1;
    share.cpuPercent += process->cpuPercent;
    share.memoryBytes += process->memoryBytes;
    share.gpuPercent += process->gpuPercent;
  }
  std::vector<HelperShare> rows;
  std::copy_if(shares.begin(), shares.end(), std::back_inserter(rows),
               [](const HelperShare& share) { return share.processCount > 0; });
  return rows;
}

/// The records of `members` with their roles, largest memory first, equals as they stood.
std::vector<ProcessSample> byMemory(std::vector<RankedMember> members) {
  std::stable_sort(members.begin(), members.end(),
                   [](const RankedMember& first, const RankedMember& second) {
                     return first.process->memoryBytes > second.process->memoryBytes;
                   });
  std::vector<ProcessSample> processes;
  processes.reserve(members.size());
  for (const auto& [process, role] : members) {
    processes.push_back(*process);
    processes.back().helperRole = role;
  }
  return processes;
}

}  // namespace

std::int32_t GroupBucket::rootPID() const {
  if (members.empty()) return -1;
  const ProcessSample* root = members.front().process;
  bool isRootMain = bundlePath && liesInMainFolder(root->executablePath, *bundlePath);
  for (const GroupMember& member : std::span(members).subspan(1)) {
    const ProcessSample* const candidate = member.process;
    const bool isMain = bundlePath && liesInMainFolder(candidate->executablePath, *bundlePath);
    const bool goesOver = isMain == isRootMain ? candidate->pid < root->pid : isMain;
    if (!goesOver) continue;
    root = candidate;
    isRootMain = isMain;
  }
  return root->pid;
}

AppGroup GroupBucket::folded(double installedMemory) const {
  AppGroup group;
  group.id = id;
  group.name = name;
  group.kind = kind;
  group.bundlePath = bundlePath;
  group.bundleIdentifier = bundleIdentifier;
  const std::int32_t root = rootPID();
  std::vector<RankedMember> ranked;
  ranked.reserve(members.size());
  for (const auto& [process, role] : members) {
    ranked.push_back({process, helperRole(*process, role, root, bundlePath)});
    addFigures(group, *process);
  }
  const double share = static_cast<double>(group.memoryBytes) / installedMemory * 100.0;
  group.memoryPercent = std::min(share, 100.0);
  group.helperShares = sharesOf(ranked);
  group.processes = byMemory(std::move(ranked));
  return group;
}

}  // namespace korvantis
