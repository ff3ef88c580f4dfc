#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/views/RootContentModel.h"

namespace korvantis {
namespace {

class RootContentModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  RootContentModel model;

  void start() { model.setStore(&scripted.store()); }
};

TEST_F(RootContentModelTest, TheMachineLineNamesChipCoresAndMemory) {
  scripted.hardware.chipName = "Apple M2 Pro";
  scripted.hardware.totalMemoryBytes = 32ULL << 30;
  start();
  EXPECT_EQ(model.machineLine(), QString::fromUtf8("Apple M2 Pro · 10 cores (6P + 4E) · 32.0 GB"));
}

TEST_F(RootContentModelTest, AMachineOfEqualCoresShowsTheirNumberOnly) {
  scripted.hardware.chipName = "Chip";
  scripted.hardware.logicalCores = 8;
  scripted.hardware.performanceCores = 8;
  scripted.hardware.efficiencyCores = 0;
  scripted.hardware.totalMemoryBytes = 16ULL << 30;
  start();
  EXPECT_EQ(model.machineLine(), QString::fromUtf8("Chip · 8 cores · 16.0 GB"));
}

TEST_F(RootContentModelTest, TheTabsStandInTheOrderOfThePanesWithTheirShortcuts) {
  const QList<PaneTab> tabs = model.tabs();
  const QList<PaneTab> expected{
      {QStringLiteral("overview"), QStringLiteral("Overview"),
       QStringLiteral("square.grid.2x2.fill"), QStringLiteral("Ctrl+1")},
      {QStringLiteral("processes"), QStringLiteral("Processes"),
       QStringLiteral("list.bullet.below.rectangle"), QStringLiteral("Ctrl+2")},
      {QStringLiteral("insights"), QStringLiteral("Insights"), QStringLiteral("bolt.heart.fill"),
       QStringLiteral("Ctrl+3")},
      {QStringLiteral("history"), QStringLiteral("History"), QStringLiteral("chart.xyaxis.line"),
       QStringLiteral("Ctrl+4")},
      {QStringLiteral("agents"), QStringLiteral("Agents"),
       QStringLiteral("sparkles.rectangle.stack.fill"), QStringLiteral("Ctrl+5")},
      {QStringLiteral("sound"), QStringLiteral("Sound"),
       QStringLiteral("slider.horizontal.below.waveform"), QStringLiteral("Ctrl+6")}};
  EXPECT_EQ(tabs, expected);
}

TEST_F(RootContentModelTest, TheLooksStandInTheirOrderWithTheirWords) {
  const QList<Choice> modes = model.themeModes();
  ASSERT_EQ(modes.size(), 3);
  EXPECT_EQ(modes[0], (Choice{QStringLiteral("system"), QStringLiteral("System (Auto)"),
                              QStringLiteral("Auto"), QStringLiteral("circle.lefthalf.filled")}));
  EXPECT_EQ(modes[1], (Choice{QStringLiteral("dark"), QStringLiteral("Dark Mode"),
                              QStringLiteral("Dark"), QStringLiteral("moon.stars.fill")}));
  EXPECT_EQ(modes[2], (Choice{QStringLiteral("light"), QStringLiteral("Light Mode"),
                              QStringLiteral("Light"), QStringLiteral("sun.max.fill")}));
}

TEST_F(RootContentModelTest, WithNoInsightsThereIsNoBadgeWith80ItShows80) {
  start();
  EXPECT_EQ(model.insightBadge(), QString());
  scripted.next.newInsights = makeInsights(80);
  scripted.tick();
  EXPECT_EQ(model.insightBadge(), QStringLiteral("80"));
}

TEST_F(RootContentModelTest, StrainShowsInTheTickThatReportsItAndGoesInTheFirstThatDoesNot) {
  start();
  EXPECT_FALSE(model.isUnderStrain());
  scripted.next.activeStrains = {StrainKind::memory};
  scripted.tick();
  EXPECT_TRUE(model.isUnderStrain());
  scripted.next.activeStrains.clear();
  scripted.tick();
  EXPECT_FALSE(model.isUnderStrain());
}

TEST_F(RootContentModelTest, TheTickTextFollowsTheRefreshInterval) {
  start();
  EXPECT_EQ(model.tickText(), QStringLiteral("Live 2s tick"));
  scripted.store().setRefreshInterval(5);
  EXPECT_EQ(model.tickText(), QStringLiteral("Live 5s tick"));
  scripted.store().setRefreshInterval(2.5);
  EXPECT_EQ(model.tickText(), QStringLiteral("Live 2s tick"));
}

TEST_F(RootContentModelTest, TheCountsComeFromThePresentSnapshot) {
  scripted.next.appGroups = {makeGroup("a"), makeGroup("b")};
  scripted.next.listeningPorts.resize(3);
  scripted.next.projects.resize(1);
  start();
  EXPECT_EQ(model.countsText(), QString::fromUtf8("2 groups · 3 listening ports · 1 dev projects"));
}

TEST_F(RootContentModelTest, TheFiguresAreProcessorMemoryAndPower) {
  scripted.next.system.cpuPercent = 12.34;
  scripted.next.system.memoryUsedBytes = 8ULL << 30;
  scripted.next.system.thermal.systemPowerWatts = 9.46;
  start();
  EXPECT_EQ(model.figuresText(), QString::fromUtf8("CPU 12.3% · RAM 8.0 GB · 9.5W"));
}

TEST_F(RootContentModelTest, AnIdleTickNotifiesNothing) {
  start();
  QSignalSpy strain(&model, &RootContentModel::isUnderStrainChanged);
  QSignalSpy badge(&model, &RootContentModel::insightBadgeChanged);
  QSignalSpy counts(&model, &RootContentModel::countsTextChanged);
  QSignalSpy figures(&model, &RootContentModel::figuresTextChanged);
  scripted.next.system.timestamp = Instant{5};
  scripted.tick();
  EXPECT_EQ(strain.size() + badge.size() + counts.size() + figures.size(), 0);
}

}  // namespace
}  // namespace korvantis
