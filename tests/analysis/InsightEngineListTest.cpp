// The list of the last findings, what each of them carries, and the one of a quiet start.
#include <algorithm>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "analysis/InsightFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Many applications that all fire at once.
std::vector<AppGroup> busyApps(int count) {
  std::vector<AppGroup> apps;
  apps.reserve(static_cast<std::size_t>(count));
  for (int number = 0; number < count; ++number) {
    apps.push_back(busyApp("App " + std::to_string(number), 300));
  }
  return apps;
}

TEST(InsightEngineOpening, OnTheFirstTickOfAQuietMachineTheTopMemoryHolderIsToldOnce) {
  NewInsights insights;
  insights.groups = {bigApp("Editor", 1 * GiB), bigApp("Browser", 3 * GiB)};
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Browser is top memory holder"));
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  EXPECT_THAT(insights.tickAfter(86400), IsEmpty());
}

TEST(InsightEngineOpening, WithoutGroupsItWaitsForTheFirstTickThatHasSome) {
  NewInsights insights;
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  insights.groups = {appNamed("Editor")};
  EXPECT_THAT(insights.tickAfter(2), SizeIs(1));
}

TEST(InsightEngineOpening, AnyOtherFindingOfTheFirstTickTakesItsPlaceForGood) {
  NewInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Editor using high CPU"));
  insights.groups[0].cpuPercent = 0;
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
}

TEST(InsightEngineOpening, ALimitOfTheFirstTickTakesItsPlaceToo) {
  NewInsights insights;
  insights.groups = {appNamed("Editor")};
  AppLimit limit;
  limit.appID = insights.groups[0].id;
  limit.limit = 0;
  limit.minutes = 1;
  insights.limits = {limit};
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Editor passed CPU % limit"));
}

TEST(InsightEngineOpening, NeverFiresAgainEvenAfterThe25SlotsHaveTurnedOver) {
  NewInsights insights;
  insights.groups = {appNamed("Editor")};
  insights.tick();
  insights.groups = busyApps(30);
  insights.tickAfter(2);
  insights.groups = {appNamed("Editor")};
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  const auto titles = titlesOf(insights.last.newInsights);
  EXPECT_EQ(std::count(titles.begin(), titles.end(), "Editor is top memory holder"), 0);
}

TEST(InsightEngineOpening, CountsMutedGroupsAndThoseOfEveryKind) {
  NewInsights insights;
  insights.groups = {bigApp("Editor", 1), bigApp("kernel_task", 3), bigApp("Browser", 2)};
  insights.groups[1].kind = AppGroupKind::system;
  insights.mutes = {mute(insights.groups[1])};
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].targetAppID, insights.groups[1].id);
  EXPECT_EQ(told[0].targetAppName, "kernel_task");
}

TEST(InsightEngineOpening, OfEqualHoldersTheEarliestIsNamed) {
  NewInsights insights;
  insights.groups = {bigApp("A", 1), bigApp("B", 2), bigApp("C", 2)};
  EXPECT_EQ(insights.tick().at(0).targetAppName, "B");
}

TEST(InsightEngineOpening, HasTheKindOfMemoryGrowthAndDoesNotUseItsCooldown) {
  NewInsights insights;
  insights.groups = {bigApp("Editor", 1 * GiB)};
  EXPECT_EQ(insights.tick().at(0).kind, InsightKind::memoryGrowth);
  insights.groups[0].memoryBytes = 2 * GiB;
  EXPECT_THAT(titlesOf(insights.tickAfter(2)), ElementsAre("Editor memory grew rapidly"));
}

TEST(InsightEngineList, EveryFindingHasAFreshIDThePresentMomentAndNoPin) {
  ScriptedInsights insights;
  insights.groups = busyApps(5);
  insights.system.timestamp = Instant{12};
  insights.tickAfter(2);
  insights.tickAfter(600);
  std::set<Uuid> ids;
  for (const Insight& insight : insights.last.newInsights) {
    ids.insert(insight.id);
    EXPECT_FALSE(insight.isPinned);
  }
  EXPECT_THAT(ids, SizeIs(11));
  EXPECT_EQ(insights.last.newInsights[0].createdAt, Instant{insights.now});
  EXPECT_EQ(insights.last.newInsights[5].createdAt, Instant{insights.now - 600});
}

TEST(InsightEngineList, OldFindingsStayListedWhileNothingFires) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.tick();
  const auto before = insights.last.newInsights;
  EXPECT_THAT(before, SizeIs(2));
  insights.groups.clear();
  EXPECT_THAT(insights.tickAfter(86400), IsEmpty());
  EXPECT_EQ(insights.last.newInsights, before);
  EXPECT_THAT(insights.last.activeStrains, IsEmpty());
}

TEST(InsightEngineList, HoldsTheNewest25NewestFirst) {
  ScriptedInsights insights;
  insights.groups = busyApps(24);
  insights.tick();
  ASSERT_THAT(insights.last.newInsights, SizeIs(25));
  EXPECT_EQ(insights.last.newInsights.front().targetAppName, "App 23");
  EXPECT_EQ(insights.last.newInsights.back().targetAppName, "Opening");
  insights.groups = busyApps(25);
  insights.tickAfter(2);
  ASSERT_THAT(insights.last.newInsights, SizeIs(25));
  EXPECT_EQ(insights.last.newInsights.front().targetAppName, "App 24");
  EXPECT_EQ(insights.last.newInsights.back().targetAppName, "App 0");
}

TEST(InsightEngineList, ThirtyFindingsOfOneTickLeaveTheLast25) {
  ScriptedInsights insights;
  insights.groups = busyApps(30);
  insights.tick();
  ASSERT_THAT(insights.last.newInsights, SizeIs(25));
  EXPECT_EQ(insights.last.newInsights.front().targetAppName, "App 29");
  EXPECT_EQ(insights.last.newInsights.back().targetAppName, "App 5");
}

/// A tick in which every rule but that of the quiet start finds something.
std::vector<Insight> troubledTick() {
  ScriptedInsights insights;
  insights.groups = {bigApp("Editor", 1 * GiB), bigApp("Browser", 512 * MiB)};
  insights.tick();
  insights.groups[0].cpuPercent = 312.5;
  insights.groups[0].memoryBytes = 5 * GiB / 2;
  insights.groups[0].processes.resize(3);
  insights.groups[1].cpuPercent = 400;
  insights.groups[1].memoryBytes = 2 * GiB;
  insights.groups[1].diskWriteBytesPerSec = 9;
  insights.system.memoryPressure = MemoryPressureLevel::warning;
  insights.system.memoryPressurePercent = 71.5;
  insights.system.swapUsedBytes = 700 * MiB;
  insights.system.diskWriteBytesPerSec = 90.0 * static_cast<double>(MiB);
  insights.system.networkInBytesPerSec = 26.0 * static_cast<double>(MiB);
  insights.system.networkOutBytesPerSec = 512;
  insights.servers = {serverWith({3000}, 80 * MiB), serverWith({8080, 8081}, 40 * MiB)};
  insights.system.thermal.hottestCelsius = 91.27;
  insights.system.thermal.hottestSensorName = "GPU";
  insights.system.neuralEnginePercent = 33.3;
  insights.system.neuralEngineHolder = "Photos";
  AppLimit limit;
  limit.appID = insights.groups[1].id;
  limit.limit = 250.9;
  limit.minutes = 0;
  insights.limits = {limit};
  return insights.tickAfter(2);
}

struct Row {
  InsightKind kind;
  std::optional<std::string> target;
  std::string title;
  std::string detail;
  std::string metricText;
};

/// In the order of the rules: per application busy cores and then growth, the machine, the limits.
const std::vector<Row>& troubledRows() {
  static const std::vector<Row> rows{
      {InsightKind::sustainedCPU, "Editor", "Editor using high CPU",
       "Sustained multi-core load across 3 process(es).", "312% CPU"},
      {InsightKind::memoryGrowth, "Editor", "Editor memory grew rapidly",
       "Footprint increased by 1.5 GB since baseline.", "2.5 GB"},
      {InsightKind::sustainedCPU, "Browser", "Browser using high CPU",
       "Sustained multi-core load across 0 process(es).", "400% CPU"},
      {InsightKind::memoryGrowth, "Browser", "Browser memory grew rapidly",
       "Footprint increased by 1.5 GB since baseline.", "2.0 GB"},
      {InsightKind::memoryPressure, "Editor", "Memory pressure is warning",
       "Swap used: 700 MB. Top holder: Editor.", "72% pressure"},
      {InsightKind::diskBurst, "Browser", "Heavy disk write activity",
       "Browser is writing heavily to storage.", "90.0 MB/s"},
      {InsightKind::networkBurst, std::nullopt, "Sustained high network transfer",
       "Down 26.0 MB/s · Up 512 B/s", "26.0 MB/s"},
      {InsightKind::idleServers, std::nullopt, "2 idle dev servers listening",
       "Ports 3000, 8080, 8081 idle for >30m.", "120 MB"},
      {InsightKind::runningHot, std::nullopt, "Mac is running warm (91°C)",
       "Hottest sensor: GPU at 91.3°C.", "91.3°C"},
      {InsightKind::neuralEngineBusy, std::nullopt, "Neural Engine active (Photos)",
       "On-device ML inference running on Apple Neural Engine.", "33% ANE"},
      {InsightKind::appLimit, "Browser", "Browser passed CPU % limit",
       "Currently at 400% CPU (limit: 250).", "400% CPU"}};
  return rows;
}

TEST(InsightEngineList, OneTickCanTellEverythingInTheOrderOfTheRulesAndInItsExactWords) {
  const auto told = troubledTick();
  ASSERT_EQ(told.size(), troubledRows().size());
  for (std::size_t index = 0; index < told.size(); ++index) {
    const Row& row = troubledRows()[index];
    const Insight& insight = told[index];
    EXPECT_EQ(insight.kind, row.kind) << row.title;
    EXPECT_EQ(insight.title, row.title);
    EXPECT_EQ(insight.detail, row.detail);
    EXPECT_EQ(insight.metricText, row.metricText) << row.title;
    EXPECT_EQ(insight.targetAppName, row.target) << row.title;
    const auto id = row.target ? std::optional(appNamed(*row.target).id) : std::nullopt;
    EXPECT_EQ(insight.targetAppID, id) << row.title;
  }
}

TEST(InsightEngineList, TheOpeningFindingCountsProcessesAndGivesTheShareOfMemory) {
  NewInsights insights;
  insights.groups = {bigApp("Browser", 3 * GiB)};
  insights.groups[0].processes.resize(12);
  insights.groups[0].memoryPercent = 18.75;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].title, "Browser is top memory holder");
  EXPECT_EQ(told[0].detail, "12 processes active (18.8% of RAM).");
  EXPECT_EQ(told[0].metricText, "3.0 GB");
  EXPECT_EQ(told[0].targetAppID, "/Applications/Browser.app");
  EXPECT_EQ(told[0].targetAppName, "Browser");
}

}  // namespace
}  // namespace korvantis
