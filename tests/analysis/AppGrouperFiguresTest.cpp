#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"

namespace korvantis {
namespace {

const std::string foo = "/Applications/Foo.app";

ProcessSample inFoo(std::int32_t pid, const std::string& place, std::uint64_t memory = 0) {
  ProcessSample process = processAt(pid, foo + "/Contents/" + place, "p");
  process.memoryBytes = memory;
  return process;
}

std::vector<AppGroup> grouped(const std::vector<ProcessSample>& processes,
                              std::uint64_t totalMemoryBytes = 1000) {
  ScriptedPropertyLists lists;
  AppGrouper grouper(lists.calls());
  return grouper.group(processes, totalMemoryBytes);
}

/// The role that the process got in its group; `network` never happens by itself in these tests.
HelperRole roleOfPID(const AppGroup& group, std::int32_t pid) {
  for (const ProcessSample& process : group.processes) {
    if (process.pid == pid) return process.helperRole;
  }
  return HelperRole::network;
}

TEST(AppGrouper, EmptyProcessListYieldsAnEmptyGroupList) {
  EXPECT_TRUE(grouped({}).empty());
}

TEST(AppGrouper, FiguresOfAGroupAreTheSumsOfItsProcesses) {
  ProcessSample first = inFoo(7, "MacOS/Foo", 100);
  first.cpuPercent = 150;
  first.gpuPercent = 80;
  first.networkInBytesPerSec = 1;
  first.networkOutBytesPerSec = 2;
  first.diskReadBytesPerSec = 3;
  first.diskWriteBytesPerSec = 4;
  first.energyWatts = 5;
  ProcessSample second = first;
  second.pid = 8;
  second.memoryBytes = 300;
  second.networkOutBytesPerSec = 20;
  second.energyWatts = 0.5;
  const AppGroup group = grouped({first, second})[0];
  EXPECT_EQ(group.cpuPercent, 300);
  EXPECT_EQ(group.gpuPercent, 160);
  EXPECT_EQ(group.memoryBytes, 400U);
  EXPECT_EQ(group.memoryPercent, 40);
  EXPECT_EQ(group.networkInBytesPerSec, 2);
  EXPECT_EQ(group.networkOutBytesPerSec, 22);
  EXPECT_EQ(group.diskReadBytesPerSec, 6);
  EXPECT_EQ(group.diskWriteBytesPerSec, 8);
  EXPECT_EQ(group.energyWatts, 5.5);
}

TEST(AppGrouper, SumsAreAddedInTheOrderOfTheListNotOfMemory) {
  // 1e16 + 1 + 1 loses both ones, 1 + 1 + 1e16 loses none.
  ProcessSample large = inFoo(7, "MacOS/Foo", 300);
  large.cpuPercent = 1e16;
  ProcessSample small = inFoo(8, "MacOS/Foo", 100);
  small.cpuPercent = 1;
  ProcessSample other = small;
  other.pid = 9;
  EXPECT_EQ(grouped({small, other, large})[0].cpuPercent, 1e16 + 2);
  EXPECT_EQ(grouped({large, small, other})[0].cpuPercent, 1e16);
}

TEST(AppGrouper, RecordsKeepAllTheirFieldsButTheRole) {
  ProcessSample process = inFoo(7, "MacOS/Foo", 100);
  process.workingDirectory = "/tmp";
  process.projectPath = "/src/x";
  process.listeningPorts = {80, 8080};
  process.idleWakeups = 9;
  process.helperRole = HelperRole::gpu;
  ProcessSample expected = process;
  expected.helperRole = HelperRole::main;
  EXPECT_EQ(grouped({process})[0].processes, std::vector<ProcessSample>{expected});
}

TEST(AppGrouper, TotalOfZeroDividesByOne) {
  EXPECT_EQ(grouped({inFoo(7, "MacOS/Foo", 1)}, 0)[0].memoryPercent, 100);
  EXPECT_EQ(grouped({inFoo(7, "MacOS/Foo", 500)}, 0)[0].memoryPercent, 100);
  EXPECT_EQ(grouped({inFoo(7, "MacOS/Foo", 0)}, 0)[0].memoryPercent, 0);
}

TEST(AppGrouper, MemoryAboveTheTotalShows100NotMore) {
  EXPECT_EQ(grouped({inFoo(7, "MacOS/Foo", 2000)}, 1000)[0].memoryPercent, 100);
  EXPECT_EQ(grouped({inFoo(7, "MacOS/Foo", 1000)}, 1000)[0].memoryPercent, 100);
  EXPECT_EQ(grouped({inFoo(7, "MacOS/Foo", 995)}, 1000)[0].memoryPercent, 99.5);
}

TEST(AppGrouper, ProcessesStandByMemoryLargestFirstAndEqualsAsTheyCame) {
  const auto groups = grouped({inFoo(9, "a", 10), inFoo(3, "b", 20), inFoo(5, "c", 10),
                               inFoo(1, "d", 20), inFoo(2, "e", 10)});
  EXPECT_EQ(pidsOf(groups[0]), (std::vector<std::int32_t>{3, 1, 9, 5, 2}));
}

TEST(AppGrouper, OnlyProcessOfAGroupIsMainWhateverItsArgumentsSay) {
  ProcessSample process = inFoo(7, "Frameworks/Renderer");
  process.arguments = "--type=renderer --extension";
  EXPECT_EQ(grouped({process})[0].processes[0].helperRole, HelperRole::main);
  ProcessSample lone = processAt(8, "/usr/bin/gpu", "gpu");
  EXPECT_EQ(grouped({lone})[0].processes[0].helperRole, HelperRole::main);
}

TEST(AppGrouper, ProcessInTheMainFolderIsRootOverALowerPidElsewhereInTheBundle) {
  const std::vector<ProcessSample> processes{inFoo(3, "Frameworks/h"), inFoo(7, "MacOS/Foo")};
  const AppGroup group = grouped(processes)[0];
  EXPECT_EQ(roleOfPID(group, 7), HelperRole::main);
  EXPECT_EQ(roleOfPID(group, 3), HelperRole::other);
  const AppGroup turned = grouped({processes[1], processes[0]})[0];
  EXPECT_EQ(roleOfPID(turned, 7), HelperRole::main);
  EXPECT_EQ(roleOfPID(turned, 3), HelperRole::other);
}

TEST(AppGrouper, LowerPidIsRootAmongProcessesInTheMainFolder) {
  const AppGroup group = grouped(
      {inFoo(9, "MacOS/b"), inFoo(7, "MacOS/a"), inFoo(8, "MacOS/c"), inFoo(2, "Helpers/d")})[0];
  EXPECT_EQ(roleOfPID(group, 7), HelperRole::main);
  EXPECT_EQ(roleOfPID(group, 8), HelperRole::other);
  EXPECT_EQ(roleOfPID(group, 9), HelperRole::other);
  EXPECT_EQ(roleOfPID(group, 2), HelperRole::other);
}

TEST(AppGrouper, LowerPidIsRootWhereNoneLiesInTheMainFolder) {
  const AppGroup group = grouped({inFoo(9, "Helpers/a"), inFoo(7, "Helpers/b")})[0];
  EXPECT_EQ(roleOfPID(group, 7), HelperRole::main);
  EXPECT_EQ(roleOfPID(group, 9), HelperRole::other);
}

TEST(AppGrouper, LowerPidIsRootOfAGroupWithoutABundle) {
  const AppGroup group = grouped({processAt(9, "/a/Contents/MacOS/t"), processAt(7, "/b/t")})[0];
  EXPECT_EQ(roleOfPID(group, 7), HelperRole::main);
  EXPECT_EQ(roleOfPID(group, 9), HelperRole::other);
}

TEST(AppGrouper, MainFolderOfANestedAppIsNotTheMainFolder) {
  const AppGroup group = grouped({inFoo(9, "MacOS/Foo"), inFoo(3, "In.app/Contents/MacOS/In")})[0];
  EXPECT_EQ(roleOfPID(group, 9), HelperRole::main);
  EXPECT_EQ(roleOfPID(group, 3), HelperRole::other);
}

TEST(AppGrouper, BothRecordsOfTheRootsPidAreMain) {
  ProcessSample second = inFoo(7, "Helpers/renderer", 5);
  const AppGroup group = grouped({inFoo(7, "MacOS/Foo"), second, inFoo(8, "Helpers/x")})[0];
  ASSERT_EQ(group.helperShares.size(), 2U);
  EXPECT_EQ(group.helperShares[0].role, HelperRole::main);
  EXPECT_EQ(group.helperShares[0].processCount, 2);
}

TEST(AppGrouper, HelperSharesHaveOneRowPerRoleThatOccursInRoleOrder) {
  ProcessSample network = inFoo(10, "h", 1);
  network.arguments = "networking";
  ProcessSample firstRenderer = inFoo(8, "h", 20);
  firstRenderer.arguments = "--type=renderer";
  firstRenderer.cpuPercent = 5;
  firstRenderer.gpuPercent = 1.5;
  ProcessSample secondRenderer = firstRenderer;
  secondRenderer.pid = 9;
  secondRenderer.cpuPercent = 7;
  secondRenderer.memoryBytes = 30;
  const AppGroup group =
      grouped({network, firstRenderer, secondRenderer, inFoo(7, "MacOS/Foo", 4)})[0];
  const std::vector<HelperShare> expected{
      {HelperRole::main, 1, 0, 4, 0},
      {HelperRole::renderer, 2, 12, 50, 3},
      {HelperRole::network, 1, 0, 1, 0},
  };
  EXPECT_EQ(group.helperShares, expected);
}

TEST(AppGrouper, HelperSharesCanHoldEveryRole) {
  std::vector<ProcessSample> processes{inFoo(7, "MacOS/Foo")};
  for (const std::string word : {"idle", "networking", "metal", "plugin", "renderer"}) {
    ProcessSample process = inFoo(static_cast<std::int32_t>(7 + processes.size()), "h");
    process.arguments = word;
    processes.push_back(process);
  }
  std::vector<HelperRole> roles;
  const auto groups = grouped(processes);
  for (const HelperShare& share : groups[0].helperShares) roles.push_back(share.role);
  EXPECT_EQ(roles, (std::vector<HelperRole>{HelperRole::main, HelperRole::renderer,
                                            HelperRole::extensionHost, HelperRole::gpu,
                                            HelperRole::network, HelperRole::other}));
}

}  // namespace
}  // namespace korvantis
