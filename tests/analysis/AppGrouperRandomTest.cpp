// Random ticks: what holds for every result, and a second, plain grouping to compare with.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "analysis/AppGroupOrder.h"
#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"
#include "analysis/StableMergeSort.h"
#include "core/EnumerationTable.h"

namespace korvantis {
namespace {

constexpr std::uint64_t totalMemory = 20000;

/// Makes ticks in which pids repeat, parents run in circles and all kinds of paths occur. Figures
/// are multiples of a quarter, so that sums are exact in any order.
class RandomTicks {
 public:
  explicit RandomTicks(unsigned seed) : random(seed) {}

  std::vector<ProcessSample> next() {
    std::vector<ProcessSample> processes(below(40));
    const std::uint32_t pids = 2 + below(50);
    for (ProcessSample& process : processes) process = nextProcess(pids);
    return processes;
  }

 private:
  ProcessSample nextProcess(std::uint32_t pids) {
    const std::vector<std::string> paths{
        "",
        "/bin/sh",
        "/bin/sh",
        "/usr/libexec/d",
        "/Applications/A.app/Contents/MacOS/A",
        "/Applications/A.app/Contents/Helpers/B.app/Contents/MacOS/B",
        "/opt/B.app/Contents/x",
        "/System/C.app/Contents/MacOS/C",
        "rel/D.app/x"};
    const std::vector<std::string> names{"A", "sh", "Renderer", "metald", "", "b", "c", "d"};
    ProcessSample process = processAt(pid(pids), pick(paths), pick(names));
    process.ppid = pid(pids);
    process.responsiblePID = below(3) == 0 ? pid(pids) : process.pid;
    process.uid = below(4) == 0 ? 0 : 501;
    process.arguments = pick({"", "--type=utility network", "plugin", "GPU", "x"});
    process.cpuPercent = below(40) / 4.0;
    process.gpuPercent = below(40) / 4.0;
    process.memoryBytes = below(2000);
    process.energyWatts = below(9) / 4.0;
    return process;
  }

  std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(random() % bound); }
  std::int32_t pid(std::uint32_t pids) { return static_cast<std::int32_t>(below(pids)); }
  std::string pick(const std::vector<std::string>& from) {
    return from[below(static_cast<std::uint32_t>(from.size()))];
  }

  std::mt19937 random;
};

/// The last record of a pid, found by looking through the whole list.
const ProcessSample* recordOf(const std::vector<ProcessSample>& processes, std::int32_t pid) {
  const ProcessSample* record = nullptr;
  for (const ProcessSample& process : processes) {
    if (process.pid == pid) record = &process;
  }
  return record;
}

/// Where a process belongs, step by step.
std::string plainGroupID(const std::vector<ProcessSample>& processes,
                         const ProcessSample& process) {
  const auto bundle = [](const ProcessSample* record) {
    return record ? AppGrouper::outermostAppBundlePath(record->executablePath) : std::nullopt;
  };
  if (const auto own = bundle(&process)) return *own;
  if (process.responsiblePID > 0 && process.responsiblePID != process.pid) {
    if (const auto found = bundle(recordOf(processes, process.responsiblePID))) return *found;
  }
  std::int32_t pid = process.ppid;
  for (int looked = 0; looked < 6; ++looked) {
    const ProcessSample* ancestor = pid >= 2 ? recordOf(processes, pid) : nullptr;
    if (!ancestor) break;
    if (const auto found = bundle(ancestor)) return *found;
    if (ancestor->ppid == ancestor->pid) break;
    pid = ancestor->ppid;
  }
  return "daemon:" + process.name;
}

/// The order of two groups, written as a chain of questions.
bool plainBefore(const AppGroup& first, const AppGroup& second) {
  const int firstRank = first.kind == AppGroupKind::app ? 0 : 1;
  const int secondRank = second.kind == AppGroupKind::app ? 0 : 1;
  if (firstRank < secondRank) return true;
  if (firstRank > secondRank) return false;
  const double lead = first.cpuPercent - second.cpuPercent;
  if (lead > 2.0) return true;
  if (lead < -2.0) return false;
  return first.memoryBytes > second.memoryBytes;
}

/// A merge sort that makes new lists as it goes.
std::vector<AppGroup> plainlySorted(const std::vector<AppGroup>& groups) {
  if (groups.size() < 2) return groups;
  const auto middle = groups.begin() + static_cast<std::ptrdiff_t>(groups.size() / 2);
  const auto left = plainlySorted({groups.begin(), middle});
  const auto right = plainlySorted({middle, groups.end()});
  std::vector<AppGroup> merged;
  std::size_t taken = 0;
  for (const AppGroup& group : left) {
    while (taken < right.size() && plainBefore(right[taken], group)) {
      merged.push_back(right[taken++]);
    }
    merged.push_back(group);
  }
  while (taken < right.size()) merged.push_back(right[taken++]);
  return merged;
}

/// Whether three of the groups go before each other in a circle.
bool holdsACircle(const std::vector<AppGroup>& groups) {
  for (const AppGroup& first : groups) {
    for (const AppGroup& second : groups) {
      if (!plainBefore(first, second)) continue;
      for (const AppGroup& third : groups) {
        if (plainBefore(second, third) && plainBefore(third, first)) return true;
      }
    }
  }
  return false;
}

/// The ids of the groups in the order in which the list shows them first.
std::vector<std::string> idsByFirstSight(const std::vector<ProcessSample>& processes) {
  std::vector<std::string> ids;
  for (const ProcessSample& process : processes) {
    const std::string id = plainGroupID(processes, process);
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
  }
  return ids;
}

/// Calls `check(processes, groups)` for many random ticks.
template <typename Check>
void forRandomTicks(const Check& check) {
  RandomTicks ticks(7);
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  for (int round = 0; round < 800; ++round) {
    const std::vector<ProcessSample> processes = ticks.next();
    check(processes, grouper.group(processes, totalMemory));
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(AppGrouperRandom, EveryProcessStandsInExactlyOneGroupAndTheRightOne) {
  std::size_t joined = 0;
  forRandomTicks([&joined](const auto& processes, const auto& groups) {
    // Records of one pid can be told apart by their other fields, or are truly alike.
    std::map<std::string, std::vector<ProcessSample>> expected;
    for (const ProcessSample& process : processes) {
      const std::string id = plainGroupID(processes, process);
      expected[id].push_back(process);
      joined += id.starts_with('/') && !process.executablePath.starts_with('/') ? 1 : 0;
    }
    ASSERT_EQ(groups.size(), expected.size());
    for (const AppGroup& group : groups) {
      std::vector<ProcessSample> members = expected[group.id];
      std::stable_sort(members.begin(), members.end(),
                       [](const ProcessSample& first, const ProcessSample& second) {
                         return first.memoryBytes > second.memoryBytes;
                       });
      ASSERT_EQ(group.processes.size(), members.size());
      for (std::size_t index = 0; index < members.size(); ++index) {
        members[index].helperRole = group.processes[index].helperRole;
      }
      ASSERT_EQ(group.processes, members);
    }
  });
  EXPECT_GT(joined, 100U);
}

TEST(AppGrouperRandom, SumsOfGroupsAndSharesEqualThoseOfTheProcesses) {
  forRandomTicks([](const auto&, const auto& groups) {
    for (const AppGroup& group : groups) {
      AppGroup sum;
      for (const ProcessSample& process : group.processes) {
        sum.cpuPercent += process.cpuPercent;
        sum.gpuPercent += process.gpuPercent;
        sum.memoryBytes += process.memoryBytes;
        sum.energyWatts += process.energyWatts;
      }
      HelperShare shares;
      for (const HelperShare& share : group.helperShares) {
        shares.processCount += share.processCount;
        shares.cpuPercent += share.cpuPercent;
        shares.gpuPercent += share.gpuPercent;
        shares.memoryBytes += share.memoryBytes;
      }
      ASSERT_EQ(group.cpuPercent, sum.cpuPercent);
      ASSERT_EQ(group.gpuPercent, sum.gpuPercent);
      ASSERT_EQ(group.memoryBytes, sum.memoryBytes);
      ASSERT_EQ(group.energyWatts, sum.energyWatts);
      ASSERT_EQ(shares.processCount, static_cast<std::int64_t>(group.processes.size()));
      ASSERT_EQ(shares.cpuPercent, sum.cpuPercent);
      ASSERT_EQ(shares.gpuPercent, sum.gpuPercent);
      ASSERT_EQ(shares.memoryBytes, sum.memoryBytes);
      const double percent = static_cast<double>(sum.memoryBytes) / totalMemory * 100;
      ASSERT_EQ(group.memoryPercent, percent > 100 ? 100 : percent);
    }
  });
}

TEST(AppGrouperRandom, SharesStandInRoleOrderAndCountTheirRoles) {
  forRandomTicks([](const auto&, const auto& groups) {
    for (const AppGroup& group : groups) {
      std::vector<HelperShare> expected;
      for (const HelperRole role : allCases<HelperRole>()) {
        HelperShare share;
        share.role = role;
        for (const ProcessSample& process : group.processes) {
          if (process.helperRole != role) continue;
          share.processCount += 1;
          share.cpuPercent += process.cpuPercent;
          share.memoryBytes += process.memoryBytes;
          share.gpuPercent += process.gpuPercent;
        }
        if (share.processCount > 0) expected.push_back(share);
      }
      ASSERT_EQ(group.helperShares, expected);
    }
  });
}

TEST(AppGrouperRandom, IdNameAndKindAgree) {
  forRandomTicks([](const auto&, const auto& groups) {
    for (const AppGroup& group : groups) {
      if (group.bundlePath) {
        ASSERT_EQ(group.id, *group.bundlePath);
        ASSERT_NE(group.kind, AppGroupKind::other);
      } else {
        ASSERT_EQ(group.id, "daemon:" + group.name);
        ASSERT_NE(group.kind, AppGroupKind::app);
        ASSERT_EQ(group.bundleIdentifier, std::nullopt);
      }
    }
  });
}

TEST(AppGrouperRandom, RolesFollowFromTheRootOfTheGroup) {
  forRandomTicks([](const auto&, const auto& groups) {
    for (const AppGroup& group : groups) {
      const std::string folder = group.bundlePath.value_or("?") + "/Contents/MacOS/";
      const auto rank = [&folder](const ProcessSample& process) {
        return std::pair(process.executablePath.starts_with(folder) ? 0 : 1, process.pid);
      };
      const auto root =
          std::min_element(group.processes.begin(), group.processes.end(),
                           [&rank](const ProcessSample& first, const ProcessSample& second) {
                             return rank(first) < rank(second);
                           });
      for (const ProcessSample& process : group.processes) {
        ASSERT_EQ(process.helperRole,
                  AppGrouper::classifyHelperRole(process, root->pid, group.bundlePath));
      }
    }
  });
}

TEST(AppGrouperRandom, WhatIsRememberedOfTheLastTickChangesNoResult) {
  // Pids repeat from tick to tick with other texts, and within a tick.
  PropertyListCalls lists;
  lists.dictionaryWithContentsOfFile = [](const std::string&) { return std::nullopt; };
  AppGrouper remembering(lists);
  RandomTicks ticks(11);
  for (int round = 0; round < 300; ++round) {
    const std::vector<ProcessSample> processes = ticks.next();
    const auto expected = AppGrouper(lists).group(processes, totalMemory);
    ASSERT_EQ(remembering.group(processes, totalMemory), expected);
    ASSERT_EQ(remembering.group(processes, totalMemory), expected) << "with the same texts";
  }
}

TEST(AppGrouperRandom, OrderAgreesWithASecondWritingOfTheRule) {
  std::size_t circles = 0;
  forRandomTicks([&circles](const auto& processes, const auto& groups) {
    std::vector<AppGroup> expected;
    for (const std::string& id : idsByFirstSight(processes)) {
      expected.push_back(*groupWithID(groups, id));
    }
    ASSERT_EQ(idsOf(groups), idsOf(plainlySorted(expected)));
    circles += holdsACircle(groups) ? 1 : 0;
  });
  // The ticks would prove little if the order had been transitive in all of them.
  EXPECT_GT(circles, 10U);
}

TEST(AppGrouperRandom, ListsFullOfCirclesAgreeWithASecondWritingOfTheRule) {
  std::mt19937 random(9);
  std::size_t circles = 0;
  for (int round = 0; round < 500; ++round) {
    std::vector<AppGroup> groups(random() % 40);
    for (std::size_t index = 0; index < groups.size(); ++index) {
      groups[index].id = std::to_string(index);
      groups[index].kind = allCases<AppGroupKind>()[random() % 3];
      groups[index].cpuPercent = static_cast<double>(random() % 20) / 2;
      groups[index].memoryBytes = random() % 8;
    }
    circles += holdsACircle(groups) ? 1 : 0;
    const std::vector<AppGroup> expected = plainlySorted(groups);
    stableMergeSort(groups, goesBefore);
    ASSERT_EQ(idsOf(groups), idsOf(expected));
  }
  EXPECT_GT(circles, 300U);
}

}  // namespace
}  // namespace korvantis
