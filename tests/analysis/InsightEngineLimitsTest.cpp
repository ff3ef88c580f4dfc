// The user's own limits on applications.
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "analysis/InsightFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A limit on the application of that name, with an identifier of its own.
AppLimit limitOn(const std::string& name, AppLimitFigure figure, double limit,
                 std::int64_t minutes) {
  AppLimit appLimit;
  appLimit.id = Uuid::random();
  appLimit.appID = appNamed(name).id;
  appLimit.appName = name;
  appLimit.figure = figure;
  appLimit.limit = limit;
  appLimit.minutes = minutes;
  return appLimit;
}

AppLimit cpuLimit(double limit, std::int64_t minutes) {
  return limitOn("Editor", AppLimitFigure::cpuPercent, limit, minutes);
}

/// A machine with one application at 60 percent and one limit on it.
class LimitedApp : public ScriptedInsights {
 public:
  explicit LimitedApp(const AppLimit& limit) {
    groups = {busyApp("Editor", 60)};
    limits = {limit};
  }
};

TEST(InsightEngineLimit, AValueExactlyAtTheLimitCountsAsOverIt) {
  LimitedApp insights(cpuLimit(60, 1));
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Editor passed CPU % limit"));
  LimitedApp above(cpuLimit(60.1, 1));
  EXPECT_THAT(above.tick(), IsEmpty());
}

TEST(InsightEngineLimit, CPUIsComparedInPercentOfOneCore) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.groups[0].cpuPercent = 412.6;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(2)) << "the rule for busy applications told one too";
  EXPECT_EQ(told[1].title, "Editor passed CPU % limit");
  EXPECT_EQ(told[1].metricText, "413% CPU");
  EXPECT_EQ(told[1].detail, "Currently at 413% CPU (limit: 50).");
}

TEST(InsightEngineLimit, MemoryIsComparedInMiB) {
  LimitedApp insights(limitOn("Editor", AppLimitFigure::memoryMB, 4096, 1));
  insights.groups[0].memoryBytes = 4096 * MiB - 1;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.groups[0].memoryBytes = 4096 * MiB;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].title, "Editor passed Memory (MB) limit");
  EXPECT_EQ(told[0].metricText, "4.0 GB");
  EXPECT_EQ(told[0].detail, "Currently at 4.0 GB (limit: 4096).");
}

TEST(InsightEngineLimit, AFractionOfAMiBCounts) {
  LimitedApp insights(limitOn("Editor", AppLimitFigure::memoryMB, 100.5, 1));
  insights.groups[0].memoryBytes = 100 * MiB + MiB / 2 - 1;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.groups[0].memoryBytes = 100 * MiB + MiB / 2;
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineLimit, GPUIsComparedInPercent) {
  LimitedApp insights(limitOn("Editor", AppLimitFigure::gpuPercent, 40, 1));
  insights.groups[0].gpuPercent = 39.9;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.groups[0].gpuPercent = 40;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].title, "Editor passed GPU % limit");
  EXPECT_EQ(told[0].metricText, "40% GPU");
  EXPECT_EQ(told[0].detail, "Currently at 40% GPU (limit: 40).");
}

TEST(InsightEngineLimit, EnergyIsComparedInWatts) {
  LimitedApp insights(limitOn("Editor", AppLimitFigure::energyWatts, 12.5, 1));
  insights.groups[0].energyWatts = 12.4;
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.groups[0].energyWatts = 12.55;
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].title, "Editor passed Energy (W) limit");
  EXPECT_EQ(told[0].metricText, "12.6 W");
  EXPECT_EQ(told[0].detail, "Currently at 12.6 W (limit: 12).") << "the limit is cut, not rounded";
}

TEST(InsightEngineLimit, FiguresAreRoundedAsPrintfRounds) {
  LimitedApp insights(cpuLimit(0, 1));
  insights.groups[0].cpuPercent = 2.5;
  EXPECT_EQ(insights.tick().at(0).metricText, "2% CPU");
}

TEST(InsightEngineLimit, OneMinuteFiresOnTheFirstTickOver) {
  LimitedApp insights(cpuLimit(50, 1));
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineLimit, NoMinutesAndFewerFireOnTheFirstTickOverToo) {
  LimitedApp none(cpuLimit(50, 0));
  EXPECT_THAT(none.tick(), SizeIs(1));
  LimitedApp fewer(cpuLimit(50, -5));
  EXPECT_THAT(fewer.tick(), SizeIs(1));
}

TEST(InsightEngineLimit, TwoMinutesWait120Seconds) {
  LimitedApp insights(cpuLimit(50, 2));
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.tickAfter(119), IsEmpty());
  EXPECT_THAT(insights.tickAfter(0.9), IsEmpty());
  LimitedApp exactly(cpuLimit(50, 2));
  exactly.tick();
  EXPECT_THAT(exactly.tickAfter(120), SizeIs(1));
}

TEST(InsightEngineLimit, AsManyMinutesAsANumberHoldsNeverEnd) {
  LimitedApp insights(cpuLimit(50, INT64_MAX));
  insights.tick();
  EXPECT_THAT(insights.tickAfter(1e9), IsEmpty());
}

TEST(InsightEngineLimit, ATickBelowTheLimitStartsTheWaitingAgain) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  insights.groups[0].cpuPercent = 49.9;
  EXPECT_THAT(insights.tickAfter(119), IsEmpty());
  insights.groups[0].cpuPercent = 50;
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  EXPECT_THAT(insights.tickAfter(119), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineLimit, OnAnAppThatQuitsAndReturnsTheWaitingStartsAgain) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  const auto groups = std::exchange(insights.groups, {});
  insights.tickAfter(60);
  insights.groups = groups;
  EXPECT_THAT(insights.tickAfter(60), IsEmpty());
  EXPECT_THAT(insights.tickAfter(119), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineLimit, AMuteStartsTheWaitingAgain) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  insights.mutes = {mute(insights.groups[0])};
  EXPECT_THAT(insights.tickAfter(120), IsEmpty());
  insights.mutes.clear();
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  EXPECT_THAT(insights.tickAfter(119), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineLimit, AMuteThatEndsNowHoldsALimitBackToo) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.mutes = {mute(insights.groups[0], insights.now)};
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.tickAfter(0.001), SizeIs(1));
}

TEST(InsightEngineLimit, ADisabledLimitDoesNotFire) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.limits[0].isEnabled = false;
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineLimit, WhileDisabledItsWaitingTimeStandsAndGoesOn) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  insights.limits[0].isEnabled = false;
  insights.groups[0].cpuPercent = 0;
  EXPECT_THAT(insights.tickAfter(120), IsEmpty());
  insights.limits[0].isEnabled = true;
  insights.groups[0].cpuPercent = 60;
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1)) << "the tick below the limit was not looked at";
}

TEST(InsightEngineLimit, IsToldEvery600SecondsWhileTheAppStaysOver) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  EXPECT_THAT(insights.tickAfter(120), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(599), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(600), SizeIs(1));
}

TEST(InsightEngineLimit, FallingBelowDoesNotEndItsCooldown) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.tick();
  insights.groups[0].cpuPercent = 0;
  insights.tickAfter(100);
  insights.groups[0].cpuPercent = 60;
  EXPECT_THAT(insights.tickAfter(499), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineLimit, TheSameLimitTwiceIsToldTwiceEachWithItsOwnWaitingAndCooldown) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  insights.limits.push_back(cpuLimit(50, 2));
  EXPECT_THAT(insights.tickAfter(60), IsEmpty());
  EXPECT_THAT(insights.tickAfter(60), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(60), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(540), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(60), SizeIs(1));
}

TEST(InsightEngineLimit, LimitsAreTakenInTheirOrder) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.limits.push_back(limitOn("Editor", AppLimitFigure::memoryMB, 0, 1));
  EXPECT_THAT(titlesOf(insights.tick()),
              ElementsAre("Editor passed CPU % limit", "Editor passed Memory (MB) limit"));
}

TEST(InsightEngineLimit, FindsItsAppByTheIDWhateverItsName) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.limits[0].appName = "Something else";
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineLimit, FindsItsAppByTheNameWithoutRegardToCase) {
  LimitedApp insights(cpuLimit(50, 1));
  insights.limits[0].appID = "com.example.editor";
  insights.limits[0].appName = "eDITOR";
  const auto told = insights.tick();
  ASSERT_THAT(told, SizeIs(1));
  EXPECT_EQ(told[0].targetAppID, insights.groups[0].id) << "the group's, not the limit's";
  EXPECT_EQ(told[0].targetAppName, "Editor");
  EXPECT_EQ(told[0].title, "Editor passed CPU % limit");
}

TEST(InsightEngineLimit, TheFirstGroupThatMatchesInEitherWayIsTaken) {
  LimitedApp insights(cpuLimit(50, 1));
  AppGroup namesake = busyApp("Editor", 0);
  namesake.id = "daemon:editor";
  insights.groups.insert(insights.groups.begin(), namesake);
  EXPECT_THAT(insights.tick(), IsEmpty()) << "an earlier namesake hides the group with the id";
}

TEST(InsightEngineLimit, AppliesToGroupsOfEveryKind) {
  for (const AppGroupKind kind : {AppGroupKind::app, AppGroupKind::system, AppGroupKind::other}) {
    LimitedApp insights(cpuLimit(50, 1));
    insights.groups[0].kind = kind;
    EXPECT_THAT(insights.tick(), SizeIs(1)) << rawValue(kind);
  }
}

TEST(InsightEngineLimit, ALimitOf0IsAlwaysReached) {
  LimitedApp insights(cpuLimit(0, 1));
  insights.groups[0].cpuPercent = 0;
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineLimit, ALimitBelow1IsPrintedAsABareZero) {
  LimitedApp insights(cpuLimit(-0.5, 1));
  EXPECT_EQ(insights.tick().at(0).detail, "Currently at 60% CPU (limit: 0).");
}

TEST(InsightEngineBridge, ATickWithoutLimitsLeavesAWaitingLimitAlone) {
  LimitedApp insights(cpuLimit(50, 2));
  insights.tick();
  insights.now += 60;
  insights.groups[0].cpuPercent = 0;
  EXPECT_THAT(insights.bridgeTick().newInsights, SizeIs(1)) << "the opening one alone";
  insights.groups[0].cpuPercent = 60;
  EXPECT_THAT(insights.tickAfter(60), SizeIs(1));
}

TEST(InsightEngineBridge, ATickOfTheBridgeSharesFindingsAndCooldowns) {
  ScriptedInsights insights;
  insights.hotCelsius = 95;
  insights.system.thermal.hottestCelsius = 85;
  insights.groups = {busyApp("Editor", 300)};
  insights.mutes = {mute(insights.groups[0])};
  const auto bridge = insights.bridgeTick();
  EXPECT_THAT(titlesOf(bridge.newInsights),
              ElementsAre("Mac is running warm (85°C)", "Editor using high CPU",
                          "Opening is top memory holder"));
  EXPECT_THAT(bridge.activeStrains, ElementsAre(StrainKind::temperature));
  insights.mutes.clear();
  insights.hotCelsius = 80;
  insights.tickAfter(2);
  EXPECT_THAT(insights.last.newInsights, SizeIs(3)) << "their cooldowns are used up";
}

}  // namespace
}  // namespace korvantis
