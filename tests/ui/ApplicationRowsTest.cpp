#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/ApplicationRows.h"

namespace korvantis {
namespace {

using ApplicationRows::matches;

std::vector<std::string> namesOf(const ApplicationRows::Groups& groups) {
  std::vector<std::string> names;
  for (const AppGroup* group : groups) names.push_back(group->name);
  return names;
}

AppGroup serverGroup() {
  ProcessSample process = makeProcess(812, "Node");
  process.listeningPorts = {3000, 50000};
  return makeGroup("Website", {process});
}

TEST(ApplicationRows, AnEmptyFilterKeepsEverything) {
  EXPECT_TRUE(matches(serverGroup(), QString()));
}

TEST(ApplicationRows, AFilterOfBlanksAloneCountsAsEmpty) {
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral(" \t\n ")));
}

TEST(ApplicationRows, AFilterFindsPartsOfTheGroupsNameInAnyCase) {
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral("WEBS")));
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral(" site ")));
  EXPECT_FALSE(matches(serverGroup(), QStringLiteral("browser")));
}

TEST(ApplicationRows, AFilterFindsPartsOfProcessNamesAndPids) {
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral("nod")));
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral("81")));
  EXPECT_FALSE(matches(serverGroup(), QStringLiteral("813")));
}

TEST(ApplicationRows, AFilterFindsPortsWithAndWithoutTheirColon) {
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral("3000")));
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral(":300")));
  EXPECT_FALSE(matches(serverGroup(), QStringLiteral(":000")));
}

TEST(ApplicationRows, APortOf50000IsFoundAlthoughItIsNotShown) {
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral("50000")));
  const AppGroup group = serverGroup();
  const auto rows = ApplicationRows::rows({&group}, {group.id});
  EXPECT_EQ(rows[1].portsText, QStringLiteral(":3000"));
}

TEST(ApplicationRows, AColonAnd3000MatchesPorts3000And30001Alike) {
  ProcessSample process = makeProcess(1, "x");
  process.listeningPorts = {30001};
  EXPECT_TRUE(matches(makeGroup("Other", {process}), QStringLiteral(":3000")));
  EXPECT_TRUE(matches(serverGroup(), QStringLiteral(":3000")));
}

TEST(ApplicationRows, FilteringKeepsTheOrderOfTheEngine) {
  const std::vector groups{makeGroup("beta"), makeGroup("alpha"), makeGroup("abc")};
  EXPECT_THAT(namesOf(ApplicationRows::filtered(groups, QStringLiteral("a"))),
              testing::ElementsAre("beta", "alpha", "abc"));
  EXPECT_THAT(namesOf(ApplicationRows::filtered(groups, QStringLiteral("al"))),
              testing::ElementsAre("alpha"));
}

TEST(ApplicationRows, SortsHighestFirstByEachField) {
  AppGroup low = makeGroup("low");
  AppGroup high = makeGroup("high");
  high.memoryBytes = 10;
  high.cpuPercent = 10;
  high.energyWatts = 10;
  high.networkInBytesPerSec = 10;
  high.diskReadBytesPerSec = 10;
  high.gpuPercent = 10;
  const std::vector groups{low, high};
  for (const ProcessSortField field : allCases<ProcessSortField>()) {
    EXPECT_THAT(namesOf(ApplicationRows::sorted(ApplicationRows::all(groups), field)),
                testing::ElementsAre("high", "low"))
        << rawValue(field);
  }
}

TEST(ApplicationRows, EqualsKeepTheOrderOfTheEngine) {
  const std::vector groups{makeGroup("c"), makeGroup("a"), makeGroup("b")};
  EXPECT_THAT(
      namesOf(ApplicationRows::sorted(ApplicationRows::all(groups), ProcessSortField::memory)),
      testing::ElementsAre("c", "a", "b"));
}

TEST(ApplicationRows, SortingByDiskOrdersByTheSumOfReadAndWriteRates) {
  AppGroup reader = makeGroup("reader");
  reader.diskReadBytesPerSec = 100;
  AppGroup both = makeGroup("both");
  both.diskReadBytesPerSec = 60;
  both.diskWriteBytesPerSec = 60;
  const std::vector groups{reader, both};
  EXPECT_THAT(
      namesOf(ApplicationRows::sorted(ApplicationRows::all(groups), ProcessSortField::disk)),
      testing::ElementsAre("both", "reader"));
}

TEST(ApplicationRows, SortingByNetworkOrdersByTheSumOfBothDirections) {
  AppGroup one = makeGroup("one");
  one.networkInBytesPerSec = 100;
  AppGroup both = makeGroup("both");
  both.networkInBytesPerSec = 60;
  both.networkOutBytesPerSec = 60;
  const std::vector groups{one, both};
  EXPECT_THAT(
      namesOf(ApplicationRows::sorted(ApplicationRows::all(groups), ProcessSortField::network)),
      testing::ElementsAre("both", "one"));
}

TEST(ApplicationRows, AGroupIsWordedWithItsFigures) {
  AppGroup group = makeGroup("Editor", {makeProcess(1, "a"), makeProcess(2, "b")});
  group.kind = AppGroupKind::app;
  group.cpuPercent = 12.34;
  group.memoryBytes = 3ULL << 30;
  group.diskReadBytesPerSec = 1024;
  group.diskWriteBytesPerSec = 2048;
  const auto rows = ApplicationRows::rows({&group}, {});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_TRUE(rows[0].isGroup);
  EXPECT_EQ(rows[0].name, QStringLiteral("Editor"));
  EXPECT_EQ(rows[0].countText, QStringLiteral("2 processes"));
  EXPECT_EQ(rows[0].cpuText, QStringLiteral("12.3%"));
  EXPECT_EQ(rows[0].memoryText, QStringLiteral("3.0 GB"));
  EXPECT_EQ(rows[0].diskText, QStringLiteral("3 KB/s"));
  EXPECT_EQ(rows[0].readText, QStringLiteral("1 KB/s"));
  EXPECT_EQ(rows[0].writeText, QStringLiteral("2 KB/s"));
  EXPECT_FALSE(rows[0].isExpanded);
}

TEST(ApplicationRows, OneProcessIsCountedInTheSingular) {
  const AppGroup group = makeGroup("tool", {makeProcess(1, "tool")});
  EXPECT_EQ(ApplicationRows::rows({&group}, {})[0].countText, QStringLiteral("1 process"));
}

TEST(ApplicationRows, MoreThanHalfACoreStandsOutAndHalfACoreDoesNot) {
  AppGroup group = makeGroup("busy");
  group.cpuPercent = 50;
  EXPECT_FALSE(ApplicationRows::rows({&group}, {})[0].isHot);
  group.cpuPercent = 50.1;
  EXPECT_TRUE(ApplicationRows::rows({&group}, {})[0].isHot);
}

TEST(ApplicationRows, AnOpenedGroupOf20ProcessesShowsThemAll) {
  std::vector<ProcessSample> processes;
  for (int pid = 1; pid <= 20; ++pid) processes.push_back(makeProcess(pid, "worker"));
  const AppGroup group = makeGroup("herd", processes);
  const auto rows = ApplicationRows::rows({&group}, {group.id});
  ASSERT_EQ(rows.size(), 21U);
  EXPECT_TRUE(rows[0].isExpanded);
  EXPECT_EQ(rows[20].pidText, QStringLiteral("PID 20"));
}

TEST(ApplicationRows, AProcessIsWordedWithItsPidRoleAndPorts) {
  ProcessSample process = makeProcess(77, "gpu-process");
  process.helperRole = HelperRole::gpu;
  process.listeningPorts = {3000, 3001};
  process.cpuPercent = 1;
  process.memoryBytes = 5 << 20;
  const AppGroup group = makeGroup("Browser", {process});
  const auto rows = ApplicationRows::rows({&group}, {group.id});
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_FALSE(rows[1].isGroup);
  EXPECT_EQ(rows[1].groupID, group.id);
  EXPECT_EQ(rows[1].name, QStringLiteral("gpu-process"));
  EXPECT_EQ(rows[1].pidText, QStringLiteral("PID 77"));
  EXPECT_EQ(rows[1].roleText, QStringLiteral("Graphics"));
  EXPECT_EQ(rows[1].portsText, QStringLiteral(":3000 :3001"));
  EXPECT_EQ(rows[1].cpuText, QStringLiteral("1.0%"));
  EXPECT_EQ(rows[1].memoryText, QStringLiteral("5 MB"));
}

TEST(ApplicationRows, ARecycledPidIsAnotherRow) {
  ApplicationRow first;
  first.isGroup = false;
  first.pid = 7;
  ApplicationRow second = first;
  second.startedAt = Instant{1};
  EXPECT_NE(first.identity(), second.identity());
}

}  // namespace
}  // namespace korvantis
