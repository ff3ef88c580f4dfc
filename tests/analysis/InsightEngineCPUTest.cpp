// Applications that keep several cores busy.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/InsightFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(InsightEngineCPU, Below150PercentNothingIsEverTold) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 149.9)};
  for (int minute = 0; minute < 60; ++minute) EXPECT_THAT(insights.tickAfter(60), IsEmpty());
}

TEST(InsightEngineCPU, At150PercentItIsToldAfter30SecondsAndNotAfter29Point9) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 150)};
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.tickAfter(29.9), IsEmpty());
  ScriptedInsights exactly;
  exactly.groups = insights.groups;
  EXPECT_THAT(exactly.tick(), IsEmpty());
  EXPECT_THAT(titlesOf(exactly.tickAfter(30)), ElementsAre("Editor using high CPU"));
}

TEST(InsightEngineCPU, AnAppAt259PercentFires30SecondsAfterReaching150) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 150)};
  insights.tick();
  insights.groups = {busyApp("Editor", 259)};
  EXPECT_THAT(insights.tickAfter(10), IsEmpty());
  EXPECT_THAT(insights.tickAfter(19.9), IsEmpty());
  EXPECT_THAT(insights.tickAfter(0.1), SizeIs(1));
}

TEST(InsightEngineCPU, At260PercentItFiresOnItsFirstTickAndAt259Point9ItWaits) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 259.9)};
  EXPECT_THAT(insights.tick(), IsEmpty());
  insights.groups = {busyApp("Browser", 260)};
  EXPECT_THAT(titlesOf(insights.tick()), ElementsAre("Browser using high CPU"));
}

TEST(InsightEngineCPU, At149Point9TheSpellIsBrokenAndItsClockRestarts) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 200)};
  insights.tick();
  insights.groups[0].cpuPercent = 149.9;
  EXPECT_THAT(insights.tickAfter(29), IsEmpty());
  insights.groups[0].cpuPercent = 200;
  EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  EXPECT_THAT(insights.tickAfter(29.9), IsEmpty());
  EXPECT_THAT(insights.tickAfter(0.1), SizeIs(1));
}

TEST(InsightEngineCPU, ACooldownOfExactly600SecondsHasPassed) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  EXPECT_THAT(insights.tick(), SizeIs(1));
  EXPECT_THAT(insights.tickAfter(599.9), IsEmpty());
  ScriptedInsights exactly;
  exactly.groups = insights.groups;
  EXPECT_THAT(exactly.tick(), SizeIs(1));
  EXPECT_THAT(exactly.tickAfter(600), SizeIs(1));
  EXPECT_THAT(exactly.tickAfter(599), IsEmpty());
  EXPECT_THAT(exactly.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineCPU, AskingInVainDoesNotProlongTheCooldown) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.tick();
  for (int tick = 1; tick < 300; ++tick) EXPECT_THAT(insights.tickAfter(2), IsEmpty());
  EXPECT_THAT(insights.tickAfter(2), SizeIs(1));
}

TEST(InsightEngineCPU, ABrokenSpellDoesNotEndTheCooldown) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.tick();
  insights.groups[0].cpuPercent = 0;
  insights.tickAfter(100);
  insights.groups[0].cpuPercent = 300;
  EXPECT_THAT(insights.tickAfter(100), IsEmpty());
}

TEST(InsightEngineCPU, EachAppHasItsOwnSpellAndItsOwnCooldown) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 200), busyApp("Browser", 149)};
  insights.tick();
  insights.groups[1].cpuPercent = 151;
  EXPECT_THAT(titlesOf(insights.tickAfter(30)), ElementsAre("Editor using high CPU"));
  EXPECT_THAT(titlesOf(insights.tickAfter(30)), ElementsAre("Browser using high CPU"));
}

TEST(InsightEngineCPU, AClockSetBackHoldsAFindingUntilItHasCaughtUp) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.tick();
  EXPECT_THAT(insights.tickAfter(-3600), IsEmpty());
  EXPECT_THAT(insights.tickAfter(4199), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineCPU, OnlyGroupsOfKindAppAreJudged) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Indexer", 400), busyApp("make", 400)};
  insights.groups[0].kind = AppGroupKind::system;
  insights.groups[1].kind = AppGroupKind::other;
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.tickAfter(60), IsEmpty());
}

TEST(InsightEngineCPU, AnAppUnmutedAfterAnHourAt200PercentFiresAtOnce) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 200)};
  insights.tick();
  insights.mutes = {mute(insights.groups[0])};
  insights.tickAfter(2);
  insights.tickAfter(3600);
  insights.mutes.clear();
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineCPU, AnAppUnmutedWithinItsCooldownStaysSilent) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  EXPECT_THAT(insights.tick(), SizeIs(1));
  insights.mutes = {mute(insights.groups[0])};
  insights.tickAfter(300);
  insights.mutes.clear();
  EXPECT_THAT(insights.tickAfter(299), IsEmpty());
  EXPECT_THAT(insights.tickAfter(1), SizeIs(1));
}

TEST(InsightEngineCPU, AMutedAppThatCoolsDownUnseenStillCountsAsBusySinceBefore) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 200)};
  insights.tick();
  insights.mutes = {mute(insights.groups[0])};
  insights.groups[0].cpuPercent = 0;
  insights.tickAfter(600);
  insights.mutes.clear();
  insights.groups[0].cpuPercent = 150;
  EXPECT_THAT(insights.tickAfter(2), SizeIs(1));
}

TEST(InsightEngineCPU, AnAppThatQuitsWhileBusyFiresOnTheFirstTickOfItsReturn) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 200)};
  insights.tick();
  insights.groups.clear();
  insights.tickAfter(5);
  insights.groups = {busyApp("Editor", 151)};
  EXPECT_THAT(insights.tickAfter(3600), SizeIs(1));
}

TEST(InsightEngineMute, AMuteThatEndsNowStillMutesAndAMomentLaterItDoesNot) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.mutes = {mute(insights.groups[0], insights.now)};
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.tickAfter(0.001), SizeIs(1));
}

TEST(InsightEngineMute, AnExpiredMuteStillInTheListHasNoEffect) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.mutes = {mute(insights.groups[0], insights.now - 1)};
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

TEST(InsightEngineMute, OneMuteInForceIsEnoughBesideAnExpiredOneOfTheSameApp) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  insights.mutes = {mute(insights.groups[0], insights.now - 1),
                    mute(insights.groups[0], insights.now + 1)};
  EXPECT_THAT(insights.tick(), IsEmpty());
}

TEST(InsightEngineMute, AMuteGoesByTheIDAndNotByTheName) {
  ScriptedInsights insights;
  insights.groups = {busyApp("Editor", 300)};
  MutedApp muted = mute(insights.groups[0]);
  muted.appID = "org.example.editor";
  insights.mutes = {muted};
  EXPECT_THAT(insights.tick(), SizeIs(1));
}

}  // namespace
}  // namespace korvantis
