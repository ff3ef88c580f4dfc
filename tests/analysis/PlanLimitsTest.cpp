#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/AgentScannerFixture.h"
#include "analysis/PlanLimits.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;

constexpr AgentTokens codexSamples{.today = 96400, .week = 680000};

PlanLimitStatus claudeRow(std::int64_t today, std::int64_t week = 0) {
  return planLimits({.today = today, .week = week}, codexSamples).at(0);
}

PlanLimitStatus codexRow(std::int64_t today, std::int64_t week = 0) {
  return planLimits({}, {.today = today, .week = week}).at(1);
}

class PlanLimits : public test::AgentScannerFixture {};

TEST_F(PlanLimits, AreTheseTwoRowsAlsoWhenNoAgentRuns) {
  const PlanLimitStatus claude{.tool = "Claude Code",
                               .planName = "Max 5x Plan",
                               .fiveHourUsedPercent = 40.9,
                               .fiveHourResetText = "Resets in 2h 18m",
                               .weeklyUsedPercent = 40.6,
                               .weeklyResetText = "Resets Thu 9:00 AM",
                               .paceText = "On pace",
                               .tokensToday = 184200,
                               .tokensWeek = 1420500,
                               .colorHex = "#d97757"};
  const PlanLimitStatus codex{.tool = "Codex",
                              .planName = "Pro Plan",
                              .fiveHourUsedPercent = 19.3,
                              .fiveHourResetText = "Resets in 3h 42m",
                              .weeklyUsedPercent = 19,
                              .weeklyResetText = "Resets Mon 12:00 AM",
                              .paceText = "Plenty left",
                              .tokensToday = 96400,
                              .tokensWeek = 680000,
                              .colorHex = "#3068d8"};
  EXPECT_THAT(scan().planLimits, ElementsAre(claude, codex));
  EXPECT_THAT(scan({processNamed(10, "codex")}).planLimits, ElementsAre(claude, codex));
}

TEST_F(PlanLimits, ClaudesFiveHoursLieBetween14And98) {
  EXPECT_EQ(claudeRow(0).fiveHourUsedPercent, 14);
  EXPECT_EQ(claudeRow(62999).fiveHourUsedPercent, 14);
  EXPECT_EQ(claudeRow(63500).fiveHourUsedPercent, 14.1);
  EXPECT_EQ(claudeRow(440900).fiveHourUsedPercent, 98);
  EXPECT_EQ(claudeRow(441000).fiveHourUsedPercent, 98);
  EXPECT_EQ(claudeRow(9000000).fiveHourUsedPercent, 98);
}

TEST_F(PlanLimits, ClaudesWeekLiesBetween28And98) {
  EXPECT_EQ(claudeRow(0, 0).weeklyUsedPercent, 28);
  EXPECT_EQ(claudeRow(0, 979999).weeklyUsedPercent, 28);
  EXPECT_EQ(claudeRow(0, 983500).weeklyUsedPercent, 28.1);
  EXPECT_EQ(claudeRow(0, 3500000).weeklyUsedPercent, 98);
}

TEST_F(PlanLimits, CodexsFiveHoursLieBetween9And98) {
  EXPECT_EQ(codexRow(0).fiveHourUsedPercent, 9);
  EXPECT_EQ(codexRow(44999).fiveHourUsedPercent, 9);
  EXPECT_EQ(codexRow(45500).fiveHourUsedPercent, 9.1);
  EXPECT_EQ(codexRow(500000).fiveHourUsedPercent, 98);
}

TEST_F(PlanLimits, CodexsWeekLiesBetween19And98) {
  EXPECT_EQ(codexRow(0, 759999).weeklyUsedPercent, 19);
  EXPECT_EQ(codexRow(0, 764000).weeklyUsedPercent, 19.1);
  EXPECT_EQ(codexRow(0, 4000000).weeklyUsedPercent, 98);
}

TEST_F(PlanLimits, PercentagesHaveOneDecimalRoundedHalfAwayFromZero) {
  EXPECT_EQ(codexRow(101250).fiveHourUsedPercent, 20.3);
  EXPECT_EQ(codexRow(101249).fiveHourUsedPercent, 20.2);
}

TEST_F(PlanLimits, PaceIsJudgedBeforeRounding) {
  EXPECT_EQ(claudeRow(315000).fiveHourUsedPercent, 70.0);
  EXPECT_EQ(claudeRow(315000).paceText, "On pace");
  EXPECT_EQ(claudeRow(315001).fiveHourUsedPercent, 70.0);
  EXPECT_EQ(claudeRow(315001).paceText, "Burning fast");
  EXPECT_EQ(claudeRow(9000000).paceText, "Burning fast");
  EXPECT_EQ(claudeRow(0).paceText, "On pace");
}

TEST_F(PlanLimits, PaceAtTheBoundaryFollowsTheLogs) {
  files.walks[logFolder] = {{"a.jsonl", 315000ULL * 108}};
  EXPECT_EQ(scan().planLimits[0].tokensToday, 315000);
  EXPECT_EQ(scan().planLimits[0].paceText, "On pace");
  files.walks[logFolder] = {{"a.jsonl", 315001ULL * 108}};
  now += 30;
  EXPECT_EQ(scan().planLimits[0].tokensToday, 315001);
  EXPECT_EQ(scan().planLimits[0].paceText, "Burning fast");
}

TEST_F(PlanLimits, CodexAlwaysHasPlentyLeft) {
  EXPECT_EQ(codexRow(0).paceText, "Plenty left");
  EXPECT_EQ(codexRow(9000000, 90000000).paceText, "Plenty left");
}

}  // namespace
}  // namespace korvantis
