#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/AppGroupFilter.h"

namespace korvantis {
namespace {

using AppGroupFilter::filtered;
using AppGroupFilter::Wish;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> namesOf(const AppGroupFilter::Groups& groups) {
  std::vector<std::string> names;
  for (const AppGroup* group : groups) names.push_back(group->name);
  return names;
}

AppGroup makeApp(const std::string& name, std::vector<ProcessSample> processes = {}) {
  AppGroup group = makeGroup(name, std::move(processes));
  group.kind = AppGroupKind::app;
  return group;
}

AppGroup makeServer() {
  ProcessSample process = makeProcess(812, "Node");
  process.listeningPorts = {3000, 50000};
  return makeApp("Website", {process});
}

bool finds(const AppGroup& group, const char* text) {
  return !filtered({group}, Wish{.searchText = QString::fromUtf8(text)}).empty();
}

std::vector<std::string> sortedBy(ProcessSortField field, const std::vector<AppGroup>& groups) {
  return namesOf(filtered(groups, Wish{.sortField = field}));
}

TEST(AppGroupFilter, WithShowSystemProcessesOffAToolOfKindOtherIsHiddenAndTheToggleBringsItBack) {
  AppGroup tool = makeApp("tool");
  tool.kind = AppGroupKind::other;
  AppGroup daemon = makeApp("daemon");
  daemon.kind = AppGroupKind::system;
  const std::vector groups{tool, makeApp("app"), daemon};
  EXPECT_THAT(namesOf(filtered(groups, {})), ElementsAre("app"));
  EXPECT_THAT(namesOf(filtered(groups, {.showsSystem = true})),
              ElementsAre("tool", "app", "daemon"));
}

TEST(AppGroupFilter, AHiddenGroupIsNotFoundEither) {
  AppGroup tool = makeServer();
  tool.kind = AppGroupKind::other;
  EXPECT_FALSE(finds(tool, "Website"));
  EXPECT_FALSE(finds(tool, "3000"));
}

TEST(AppGroupFilter, AnEmptyQueryKeepsEverything) {
  EXPECT_TRUE(finds(makeServer(), ""));
}

TEST(AppGroupFilter, AQueryOfSpacesAloneCountsAsEmpty) {
  EXPECT_TRUE(finds(makeServer(), "   "));
  EXPECT_TRUE(finds(makeServer(), " \t\r\n\u00a0\u2028 "));
}

TEST(AppGroupFilter, AQueryFindsPartsOfTheGroupsNameInAnyCase) {
  EXPECT_TRUE(finds(makeServer(), "WEBS"));
  EXPECT_TRUE(finds(makeServer(), " site\n"));
  EXPECT_FALSE(finds(makeServer(), "web site"));
  EXPECT_FALSE(finds(makeServer(), "browser"));
  EXPECT_TRUE(finds(makeApp("ÜBERSICHT"), "übers"));
}

TEST(AppGroupFilter, AQueryFindsPartsOfProcessNamesAndPids) {
  EXPECT_TRUE(finds(makeServer(), "NOD"));
  EXPECT_TRUE(finds(makeServer(), "81"));
  EXPECT_FALSE(finds(makeServer(), "813"));
}

TEST(AppGroupFilter, EveryProcessIsTried) {
  const AppGroup group = makeApp("app", {makeProcess(1, "one"), makeProcess(2, "two")});
  EXPECT_TRUE(finds(group, "two"));
}

TEST(AppGroupFilter, APortIsFoundWithAndWithoutItsColon) {
  EXPECT_TRUE(finds(makeServer(), "3000"));
  EXPECT_TRUE(finds(makeServer(), ":300"));
  EXPECT_TRUE(finds(makeServer(), ":"));
  EXPECT_FALSE(finds(makeServer(), ":000"));
  EXPECT_TRUE(finds(makeServer(), "000"));
}

TEST(AppGroupFilter, AColonAnd80FindsPortsThatBeginWith80And80AloneFindsThemAnywhere) {
  ProcessSample process = makeProcess(1, "x");
  process.listeningPorts = {1080};
  EXPECT_FALSE(finds(makeApp("a", {process}), ":80"));
  EXPECT_TRUE(finds(makeApp("a", {process}), "80"));
  process.listeningPorts = {8080};
  EXPECT_TRUE(finds(makeApp("a", {process}), ":80"));
  EXPECT_TRUE(finds(makeApp("a", {makeProcess(1800, "x")}), "80"));
  EXPECT_TRUE(finds(makeApp("a80", {}), "80"));
}

TEST(AppGroupFilter, APortOf50000IsFoundByItsNumberAlthoughServicePortsHidesIt) {
  EXPECT_TRUE(finds(makeServer(), "50000"));
}

TEST(AppGroupFilter, AColonAnd3000MatchesPort3000AndPort30001Alike) {
  ProcessSample process = makeProcess(1, "x");
  process.listeningPorts = {30001};
  EXPECT_TRUE(finds(makeApp("Other", {process}), ":3000"));
  EXPECT_TRUE(finds(makeServer(), ":3000"));
}

TEST(AppGroupFilter, SearchingAProjectsNameFindsNothingUnlessAGroupProcessOrPortMatches) {
  AppGroup group = makeServer();
  group.processes[0].projectPath = "/home/me/shop";
  group.processes[0].workingDirectory = "/home/me/shop";
  group.processes[0].arguments = "node shop.js";
  EXPECT_FALSE(finds(group, "shop"));
  EXPECT_TRUE(finds(group, "node"));
}

struct SortCase {
  ProcessSortField field;
  double AppGroup::*figure;
};

TEST(AppGroupFilter, EachFieldSortsByItsKeyHighestFirst) {
  for (const auto& [field, figure] :
       {SortCase{ProcessSortField::cpu, &AppGroup::cpuPercent},
        SortCase{ProcessSortField::energy, &AppGroup::energyWatts},
        SortCase{ProcessSortField::network, &AppGroup::networkInBytesPerSec},
        SortCase{ProcessSortField::network, &AppGroup::networkOutBytesPerSec},
        SortCase{ProcessSortField::disk, &AppGroup::diskReadBytesPerSec},
        SortCase{ProcessSortField::disk, &AppGroup::diskWriteBytesPerSec},
        SortCase{ProcessSortField::gpu, &AppGroup::gpuPercent}}) {
    AppGroup high = makeApp("high");
    high.*figure = 10;
    EXPECT_THAT(sortedBy(field, {makeApp("low"), high}), ElementsAre("high", "low"))
        << rawValue(field);
  }
}

TEST(AppGroupFilter, MemorySortsByItsBytes) {
  AppGroup high = makeApp("high");
  high.memoryBytes = 10;
  EXPECT_THAT(sortedBy(ProcessSortField::memory, {makeApp("low"), high}),
              ElementsAre("high", "low"));
}

TEST(AppGroupFilter, SortingByDiskOrdersByTheSumOfReadAndWriteRates) {
  AppGroup reader = makeApp("reader");
  reader.diskReadBytesPerSec = 100;
  AppGroup both = makeApp("both");
  both.diskReadBytesPerSec = 60;
  both.diskWriteBytesPerSec = 60;
  EXPECT_THAT(sortedBy(ProcessSortField::disk, {reader, both}), ElementsAre("both", "reader"));
}

TEST(AppGroupFilter, SortingByNetworkOrdersByTheSumOfBothDirections) {
  AppGroup one = makeApp("one");
  one.networkInBytesPerSec = 100;
  AppGroup both = makeApp("both");
  both.networkInBytesPerSec = 60;
  both.networkOutBytesPerSec = 60;
  EXPECT_THAT(sortedBy(ProcessSortField::network, {one, both}), ElementsAre("both", "one"));
}

TEST(AppGroupFilter, TiesKeepTheOrderOfTheEngine) {
  EXPECT_THAT(sortedBy(ProcessSortField::memory, {makeApp("c"), makeApp("a"), makeApp("b")}),
              ElementsAre("c", "a", "b"));
}

TEST(AppGroupFilter, NoPriorityOfApplicationsAppliesToTheOrder) {
  AppGroup system = makeApp("system");
  system.kind = AppGroupKind::system;
  system.memoryBytes = 2;
  AppGroup app = makeApp("app");
  app.memoryBytes = 1;
  app.cpuPercent = 400;
  EXPECT_THAT(namesOf(filtered({app, system}, {.showsSystem = true})),
              ElementsAre("system", "app"));
}

TEST(AppGroupFilter, NothingIsMadeOfNothing) {
  EXPECT_THAT(filtered({}, {}), IsEmpty());
}

}  // namespace
}  // namespace korvantis
