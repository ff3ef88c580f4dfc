// Applications whose memory has grown.
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/InsightFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// One application that goes from one size to the next, two seconds a step.
class GrowingApp {
 public:
  std::vector<Insight> at(std::uint64_t memoryBytes, double secondsLater = 2) {
    insights.groups = {bigApp("Editor", memoryBytes)};
    return insights.tickAfter(secondsLater);
  }

  ScriptedInsights insights;
};

TEST(InsightEngineMemoryGrowth, NothingFiresOnTheTickThatSetsABaseline) {
  GrowingApp app;
  EXPECT_THAT(app.at(40 * GiB), IsEmpty());
}

TEST(InsightEngineMemoryGrowth, AtExactly64MiBNoBaselineIsSet) {
  GrowingApp app;
  EXPECT_THAT(app.at(64 * MiB), IsEmpty());
  EXPECT_THAT(app.at(4 * GiB), IsEmpty()) << "this one sets it";
  EXPECT_THAT(app.at(6 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, AByteOver64MiBABaselineIsSet) {
  GrowingApp app;
  EXPECT_THAT(app.at(64 * MiB + 1), IsEmpty());
  EXPECT_THAT(app.at(4 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, AGainOf512MiBLessAByteDoesNotFire) {
  GrowingApp app;
  app.at(100 * MiB);
  EXPECT_THAT(app.at(612 * MiB - 1), IsEmpty());
  EXPECT_THAT(app.at(612 * MiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, AnAppOf1100MiBDoesNotFireAt1649MiBAndDoesAt1650) {
  GrowingApp app;
  app.at(1100 * MiB);
  EXPECT_THAT(app.at(1649 * MiB), IsEmpty());
  EXPECT_THAT(app.at(1650 * MiB - 1), IsEmpty());
  EXPECT_THAT(app.at(1650 * MiB), SizeIs(1)) << "exactly one and a half times";
}

TEST(InsightEngineMemoryGrowth, ThreeTimesTheBaselineDoesNotFireBelowAGainOf512MiB) {
  GrowingApp app;
  app.at(200 * MiB);
  EXPECT_THAT(app.at(600 * MiB), IsEmpty());
}

TEST(InsightEngineMemoryGrowth, AnAppOf4GiBDoesNotFireAt5Point9GiBAndDoesAt6) {
  GrowingApp app;
  app.at(4 * GiB);
  EXPECT_THAT(app.at(5 * GiB + 921 * MiB), IsEmpty());
  EXPECT_THAT(app.at(6 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, SlowGrowthAddsUpOnTheOldBaseline) {
  GrowingApp app;
  for (std::uint64_t size = 1100 * MiB; size < 1650 * MiB; size += 50 * MiB) {
    EXPECT_THAT(app.at(size), IsEmpty());
  }
  EXPECT_THAT(app.at(1650 * MiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, AnAppThatShrinksKeepsItsHighBaseline) {
  GrowingApp app;
  app.at(2 * GiB);
  EXPECT_THAT(app.at(100 * MiB), IsEmpty());
  EXPECT_THAT(app.at(2 * GiB), IsEmpty());
  EXPECT_THAT(app.at(3 * GiB - 1), IsEmpty());
  EXPECT_THAT(app.at(3 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, AfterFiringGrowthIsMeasuredFromTheNewSize) {
  GrowingApp app;
  app.at(1 * GiB);
  EXPECT_THAT(app.at(2 * GiB), SizeIs(1));
  EXPECT_THAT(app.at(3 * GiB - 1, 1200), IsEmpty());
  EXPECT_THAT(app.at(3 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, ASecondJumpInsideTheCooldownStaysSilentAndMovesTheBaselineUp) {
  GrowingApp app;
  app.at(1 * GiB);
  EXPECT_THAT(app.at(2 * GiB), SizeIs(1));
  EXPECT_THAT(app.at(4 * GiB, 1199), IsEmpty());
  EXPECT_THAT(app.at(5 * GiB, 1200), IsEmpty()) << "measured from 4 GiB now";
  EXPECT_THAT(app.at(6 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, ACooldownOfExactly1200SecondsHasPassed) {
  GrowingApp app;
  app.at(1 * GiB);
  EXPECT_THAT(app.at(2 * GiB), SizeIs(1));
  EXPECT_THAT(app.at(4 * GiB, 1200), SizeIs(1));
  EXPECT_THAT(app.at(8 * GiB, 1199.9), IsEmpty());
}

TEST(InsightEngineMemoryGrowth, AMutedAppKeepsItsBaselineAsItIs) {
  GrowingApp app;
  app.at(1 * GiB);
  app.insights.mutes = {mute(appNamed("Editor"))};
  EXPECT_THAT(app.at(4 * GiB), IsEmpty());
  app.insights.mutes.clear();
  EXPECT_THAT(app.at(4 * GiB), SizeIs(1));
}

TEST(InsightEngineMemoryGrowth, OnlyGroupsOfKindAppAreJudged) {
  ScriptedInsights insights;
  for (const std::uint64_t size : {1 * GiB, 4 * GiB}) {
    insights.groups = {bigApp("Indexer", size), bigApp("make", size)};
    insights.groups[0].kind = AppGroupKind::system;
    insights.groups[1].kind = AppGroupKind::other;
    EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  }
}

TEST(InsightEngineMemoryGrowth, EachAppHasItsOwnBaselineAndItsOwnCooldown) {
  ScriptedInsights insights;
  insights.groups = {bigApp("Editor", 1 * GiB), bigApp("Browser", 4 * GiB)};
  insights.tick();
  insights.groups[0].memoryBytes = 4 * GiB;
  EXPECT_THAT(titlesOf(insights.tickAfter(2)), ElementsAre("Editor memory grew rapidly"));
  insights.groups[1].memoryBytes = 6 * GiB;
  EXPECT_THAT(titlesOf(insights.tickAfter(2)), ElementsAre("Browser memory grew rapidly"));
}

}  // namespace
}  // namespace korvantis
