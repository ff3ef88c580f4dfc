#include <QAbstractItemModelTester>
#include <QLocale>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <limits>

#include "ui/ScriptedStore.h"
#include "ui/panes/AgentWords.h"
#include "ui/panes/AgentsPaneModel.h"
#include "ui/theme/OstrelTheme.h"
#include "ui/views/ModelText.h"

namespace korvantis {
namespace {

using Role = AgentListModel::Role;

class AgentsPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  AgentsPaneModel model;
  QAbstractItemModelTester tester{model.sessions(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};

  void SetUp() override { QLocale::setDefault(QLocale(QStringLiteral("en_US"))); }
  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  void start() { model.setStore(&scripted.store()); }
  QVariant at(int row, Role role) { return model.sessions()->index(row).data(role); }
  QString textAt(int row, Role role) { return at(row, role).toString(); }
};

TEST_F(AgentsPaneModelTest, WithNoAgentsRunningBothPlanCardsStillAppearWithTheirSampleTexts) {
  scripted.next.planLimits = makePlanLimits();
  start();
  EXPECT_EQ(model.sessionsTitle(), "LIVE CODING AGENT SESSIONS (0)");
  EXPECT_EQ(model.sessions()->rowCount(), 0);
  ASSERT_EQ(model.plans().size(), 2);
  const PlanCard& first = model.plans().at(0);
  EXPECT_EQ(first.tool, "Claude Code");
  EXPECT_EQ(first.planName, "Max 5x Plan");
  EXPECT_EQ(first.paceText, "On pace");
  EXPECT_EQ(first.fiveHourText, "41% · Resets in 2h 18m");
  EXPECT_EQ(first.weeklyText, "41% · Resets Thu 9:00 AM");
  EXPECT_EQ(first.todayText, "Today: 184,200 tok");
  EXPECT_EQ(first.weekText, "7d: 1,420,500 tok");
  EXPECT_EQ(first.accentColor, QColor(0xd9, 0x77, 0x57));
  const PlanCard& second = model.plans().at(1);
  EXPECT_EQ(second.tool, "Codex");
  EXPECT_EQ(second.planName, "Pro Plan");
  EXPECT_EQ(second.paceText, "Plenty left");
  EXPECT_EQ(second.fiveHourText, "19% · Resets in 3h 42m");
  EXPECT_EQ(second.weeklyText, "19% · Resets Mon 12:00 AM");
  EXPECT_EQ(second.todayText, "Today: 96,400 tok");
  EXPECT_EQ(second.weekText, "7d: 680,000 tok");
  EXPECT_EQ(second.accentColor, QColor(0x30, 0x68, 0xd8));
}

TEST_F(AgentsPaneModelTest, APaceOfBurningFastTakesTheAmberColourAndTheOthersTheGreenOne) {
  const auto colorOfPace = [](const std::string& pace) {
    PlanLimitStatus limit;
    limit.paceText = pace;
    return AgentWords::planCard(limit).paceColor;
  };
  EXPECT_EQ(colorOfPace("Burning fast"), OstrelTheme::amberWarning());
  EXPECT_EQ(colorOfPace("BREAKFAST"), OstrelTheme::amberWarning()) << "it need only contain it";
  EXPECT_EQ(colorOfPace("On pace"), OstrelTheme::safeGreen());
  EXPECT_EQ(colorOfPace("Plenty left"), OstrelTheme::safeGreen());
  EXPECT_EQ(colorOfPace(""), OstrelTheme::safeGreen());
}

TEST_F(AgentsPaneModelTest, AShareOf409Reads41PercentAndItsBarStandsAt409) {
  PlanLimitStatus limit;
  limit.fiveHourUsedPercent = 40.9;
  limit.fiveHourResetText = "Resets in 2h 18m";
  limit.weeklyUsedPercent = 40.6;
  const PlanCard card = AgentWords::planCard(limit);
  EXPECT_EQ(card.fiveHourText, "41% · Resets in 2h 18m");
  EXPECT_EQ(card.fiveHourPercent, 40.9);
  EXPECT_EQ(card.weeklyText, "41% · ");
  EXPECT_EQ(card.weeklyPercent, 40.6);
}

TEST_F(AgentsPaneModelTest, ABarIsHeldBetween0And100WhileItsTextIsNot) {
  PlanLimitStatus limit;
  limit.fiveHourUsedPercent = 130.5;
  limit.weeklyUsedPercent = -2;
  EXPECT_EQ(AgentWords::planCard(limit).fiveHourPercent, 100);
  EXPECT_EQ(AgentWords::planCard(limit).weeklyPercent, 0);
  EXPECT_EQ(AgentWords::planCard(limit).fiveHourText, "130% · ");
  EXPECT_EQ(AgentWords::planCard(limit).weeklyText, "-2% · ");
  limit.fiveHourUsedPercent = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(AgentWords::planCard(limit).fiveHourPercent, 0);
}

TEST_F(AgentsPaneModelTest, AColourThatIsNoneGivesTheColourOfTheProcessor) {
  PlanLimitStatus limit;
  limit.colorHex = "#FFF";
  EXPECT_EQ(AgentWords::planCard(limit).accentColor, OstrelTheme::cpu());
}

TEST_F(AgentsPaneModelTest, ThePlansFollowTheTickAndNotifyOnARealChangeOnly) {
  scripted.next.planLimits = makePlanLimits();
  start();
  const QSignalSpy spy(&model, &AgentsPaneModel::plansChanged);
  scripted.next.system.cpuPercent = 50;
  scripted.tick();
  EXPECT_EQ(spy.size(), 0);
  scripted.next.planLimits[0].tokensToday = 200000;
  scripted.tick();
  EXPECT_EQ(spy.size(), 1);
  EXPECT_EQ(model.plans().at(0).todayText, "Today: 200,000 tok");
}

TEST_F(AgentsPaneModelTest, ASessionSaysWhatItIsWhereItWorksAndWhatItUses) {
  AgentSession session = makeAgent(812, 2);
  session.toolName = "Claude Code";
  session.state = AgentState::waitingForApproval;
  session.projectName = "korvantis";
  session.projectPath = "/home/me/korvantis";
  session.cpuPercent = 1234.56;
  session.memoryBytes = 3ULL << 29;
  scripted.next.agentSessions = {session};
  start();
  EXPECT_EQ(model.sessionsTitle(), "LIVE CODING AGENT SESSIONS (1)");
  EXPECT_EQ(textAt(0, Role::ToolName), "Claude Code");
  EXPECT_EQ(textAt(0, Role::StateLabel), "Waiting for approval");
  EXPECT_EQ(textAt(0, Role::PidText), "PID 812");
  EXPECT_EQ(textAt(0, Role::ProjectText), "korvantis — /home/me/korvantis");
  EXPECT_EQ(textAt(0, Role::CpuText), "1234.6% CPU");
  EXPECT_EQ(textAt(0, Role::MemoryText), "1.5 GB");
  EXPECT_EQ(textAt(0, Role::Description),
            "Claude Code, Waiting for approval, PID 812, korvantis — /home/me/korvantis, child1, "
            "child2, 1234.6% CPU, 1.5 GB");
}

TEST_F(AgentsPaneModelTest, EachStateHasItsLabelAndItsColour) {
  scripted.next.agentSessions = {makeAgent(1), makeAgent(2), makeAgent(3)};
  scripted.next.agentSessions[0].state = AgentState::working;
  scripted.next.agentSessions[1].state = AgentState::waitingForApproval;
  scripted.next.agentSessions[2].state = AgentState::idle;
  start();
  EXPECT_EQ(textAt(0, Role::StateLabel), "Working");
  EXPECT_EQ(at(0, Role::StateColor).value<QColor>(), OstrelTheme::cpu());
  EXPECT_EQ(textAt(1, Role::StateLabel), "Waiting for approval");
  EXPECT_EQ(at(1, Role::StateColor).value<QColor>(), OstrelTheme::amberWarning());
  EXPECT_EQ(textAt(2, Role::StateLabel), "Idle");
  EXPECT_EQ(at(2, Role::StateColor).value<QColor>(), OstrelTheme::safeGreen());
}

TEST_F(AgentsPaneModelTest, ASessionWith5ChildNamesShows3Chips) {
  scripted.next.agentSessions = {makeAgent(1, 5), makeAgent(2, 2), makeAgent(3)};
  start();
  EXPECT_EQ(
      at(0, Role::ChildNames).toStringList(),
      QStringList({QStringLiteral("child1"), QStringLiteral("child2"), QStringLiteral("child3")}));
  EXPECT_EQ(at(1, Role::ChildNames).toStringList().size(), 2);
  EXPECT_TRUE(at(2, Role::ChildNames).toStringList().isEmpty());
}

TEST_F(AgentsPaneModelTest, TheSessionsStandInTheOrderOfTheSnapshotAndFollowIt) {
  scripted.next.agentSessions = {makeAgent(1), makeAgent(2), makeAgent(3)};
  start();
  const QSignalSpy inserted(model.sessions(), &QAbstractItemModel::rowsInserted);
  const QSignalSpy removed(model.sessions(), &QAbstractItemModel::rowsRemoved);
  const QSignalSpy moved(model.sessions(), &QAbstractItemModel::rowsMoved);
  scripted.next.agentSessions = {makeAgent(3), makeAgent(1), makeAgent(4)};
  scripted.tick();
  EXPECT_EQ(textAt(0, Role::PidText), "PID 3");
  EXPECT_EQ(textAt(1, Role::PidText), "PID 1");
  EXPECT_EQ(textAt(2, Role::PidText), "PID 4");
  EXPECT_EQ(model.sessionsTitle(), "LIVE CODING AGENT SESSIONS (3)");
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(removed.size(), 1);
  EXPECT_EQ(moved.size(), 1);
}

TEST_F(AgentsPaneModelTest, ATickSaysOnlyWhatChangedInARow) {
  scripted.next.agentSessions = {makeAgent(1), makeAgent(2)};
  start();
  const QSignalSpy changed(model.sessions(), &QAbstractItemModel::dataChanged);
  scripted.next.agentSessions[1].cpuPercent = 12;
  scripted.tick();
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
  const auto roles = changed[0][2].value<QList<int>>();
  EXPECT_EQ(QSet<int>(roles.begin(), roles.end()), QSet<int>({Role::CpuText, Role::Description}));
}

TEST_F(AgentsPaneModelTest, WhatASessionDoesNotShowChangesNothing) {
  scripted.next.agentSessions = {makeAgent(1)};
  start();
  const QSignalSpy changed(model.sessions(), &QAbstractItemModel::dataChanged);
  scripted.next.agentSessions[0].tokensToday = 7;
  scripted.next.agentSessions[0].startedAt = Instant{9};
  scripted.tick();
  EXPECT_EQ(changed.size(), 0);
}

TEST_F(AgentsPaneModelTest, TwoSessionsOfOnePidAreBothListed) {
  scripted.next.agentSessions = {makeAgent(1), makeAgent(1)};
  scripted.next.agentSessions[1].cpuPercent = 5;
  start();
  ASSERT_EQ(model.sessions()->rowCount(), 2);
  EXPECT_EQ(textAt(1, Role::CpuText), "5.0% CPU");
}

TEST_F(AgentsPaneModelTest, CountsAreGroupedAsTheUsersLanguageDoes) {
  const auto grouped = [](const char* language, qint64 count) {
    QLocale::setDefault(QLocale(QString::fromUtf8(language)));
    return AgentWords::groupedCount(count);
  };
  EXPECT_EQ(grouped("en_US", 1420500), "1,420,500");
  EXPECT_EQ(grouped("de_DE", 1420500), "1.420.500");
  EXPECT_EQ(grouped("tr_TR", 184200), "184.200");
  EXPECT_EQ(grouped("de_CH", 184200), "184’200");
  EXPECT_EQ(grouped("en_US", 999), "999");
  EXPECT_EQ(grouped("en_US", 0), "0");
  EXPECT_EQ(grouped("C", 1420500), "1,420,500") << "without a language as in English";
}

TEST_F(AgentsPaneModelTest, WordsAreSoughtByTheCaseRulesOfTheUsersLanguage) {
  const auto contains = [](const char* language, const char* text, const char* part) {
    QLocale::setDefault(QLocale(QString::fromUtf8(language)));
    return AgentWords::containsIgnoringCase(textOf(text), textOf(part));
  };
  for (const char* language : {"C", "en_US", "de_DE", "tr_TR"}) {
    EXPECT_TRUE(contains(language, "BURNING FAST", "fast")) << language;
    EXPECT_TRUE(contains(language, "Burning faſt", "fast")) << language;
    EXPECT_FALSE(contains(language, "On pace", "fast")) << language;
  }
  EXPECT_TRUE(contains("de_DE", "HIGH", "high"));
  EXPECT_FALSE(contains("tr_TR", "HIGH", "high")) << "a Turkish capital I is no i";
  EXPECT_TRUE(contains("tr_TR", "HİGH", "high"));
  EXPECT_TRUE(contains("tr_TR", "HIGH", "hıgh"));
}

}  // namespace
}  // namespace korvantis
