#include "analysis/GroupBucket.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include "analysis/AppGrouper.h"
#include "core/EnumerationTable.h"
#include "core/HelperShare.h"

namespace korvantis {

namespace {

/// A process and the role that it got; the record itself is copied only once, at its final place.
struct Member {
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
std::vector<HelperShare> sharesOf(const std::vector<Member>& members) {
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
std::vector<ProcessSample> byMemory(std::vector<Member> members) {
  std::stable_sort(members.begin(), members.end(), [](const Member& first, const Member& second) {
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
  if (processes.empty()) return -1;
  const std::string mainFolder = bundlePath.value_or("") + "/Contents/MacOS/";
  const auto isMain = [&](const ProcessSample& process) {
    return bundlePath && process.executablePath.starts_with(mainFolder);
  };
  const ProcessSample* root = processes.front();
  for (const ProcessSample* candidate : processes) {
    const bool isCandidateMain = isMain(*candidate);
    const bool decidedByPlace = isCandidateMain != isMain(*root);
    if (decidedByPlace ? isCandidateMain : candidate->pid < root->pid) root = candidate;
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
  std::vector<Member> members;
  members.reserve(processes.size());
  for (const ProcessSample* process : processes) {
    members.push_back({process, AppGrouper::classifyHelperRole(*process, root, bundlePath)});
    addFigures(group, *process);
  }
  const double share = static_cast<double>(group.memoryBytes) / installedMemory * 100.0;
  group.memoryPercent = std::min(share, 100.0);
  group.helperShares = sharesOf(members);
  group.processes = byMemory(std::move(members));
  return group;
}

}  // namespace korvantis
