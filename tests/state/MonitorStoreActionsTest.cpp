#include <QSignalSpy>
#include <QVariant>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using test::appGroup;
using test::ScriptedMonitor;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class MonitorStoreActions : public ::testing::Test {
 protected:
  MonitorStoreActions() {
    monitor.store();
    monitor.log.clear();
  }

  MonitorStore& store() { return monitor.store(); }

  /// Makes the store anew, over processes that began at these seconds.
  void restartOver(std::map<std::int32_t, double> processStarts) {
    monitor.processStarts = std::move(processStarts);
    monitor.endStore();
    monitor.store();
    monitor.log.clear();
  }

  /// Expects exactly one tick, 0.35 seconds from now and not before.
  void expectOneRefreshLater() {
    ASSERT_EQ(monitor.runLoop.delayedTasks.size(), 1U);
    EXPECT_EQ(monitor.runLoop.delayedTasks.front().delay, 0.35);
    const int before = monitor.ticks;
    monitor.runLoop.advance(0.34);
    EXPECT_EQ(monitor.ticks, before);
    monitor.runLoop.advance(0.02);
    EXPECT_EQ(monitor.ticks, before + 1);
  }

  const AppGroup mail = appGroup("Mail", 1, 2);
  ScriptedMonitor monitor;
};

TEST_F(MonitorStoreActions, QuitSafetyIsTheEnginesVerdict) {
  monitor.verdict = {QuitSafetyVerdictKind::doNot, "It records.", 12, {80}};

  EXPECT_EQ(store().quitSafety(mail), monitor.verdict);
  EXPECT_THAT(monitor.log, ElementsAre("checkQuitSafety /Applications/Mail.app"));
}

TEST_F(MonitorStoreActions, QuittingAnApplicationGivesTheEnginesAnswerAndRefreshesLater) {
  EXPECT_TRUE(store().quitApp(mail, false));
  EXPECT_THAT(monitor.log, ElementsAre("quitAppGroup /Applications/Mail.app"));
  expectOneRefreshLater();
}

TEST_F(MonitorStoreActions, AQuitThatFailsGivesFalseAndStillRefreshesLater) {
  monitor.isStopAccepted = false;

  EXPECT_FALSE(store().quitApp(mail, true));
  EXPECT_THAT(monitor.log, ElementsAre("quitAppGroup /Applications/Mail.app by force"));
  expectOneRefreshLater();
}

TEST_F(MonitorStoreActions, StoppingAProcessGivesTheEnginesAnswerAndRefreshesLater) {
  EXPECT_TRUE(store().stopProcess(77, true));
  EXPECT_THAT(monitor.log, ElementsAre("stopProcess 77 by force"));
  expectOneRefreshLater();

  monitor.isStopAccepted = false;
  EXPECT_FALSE(store().stopProcess(78, false));
  EXPECT_EQ(monitor.log.back(), "stopProcess 78");
  expectOneRefreshLater();
}

TEST_F(MonitorStoreActions, StoppingAllIdleServersHandsOverThoseOfTheLastTick) {
  monitor.nextSnapshot.idleServers.resize(2);
  monitor.nextSnapshot.idleServers[1].pid = 5;
  store().refreshTick();
  monitor.stoppedServers = 2;

  EXPECT_EQ(store().stopAllIdleServers(), 2);
  EXPECT_EQ(monitor.serversToStop, monitor.nextSnapshot.idleServers);
  expectOneRefreshLater();
}

TEST_F(MonitorStoreActions, StoppingAllIdleServersWithNoneGives0AndStillRefreshesLater) {
  EXPECT_EQ(store().stopAllIdleServers(), 0);
  EXPECT_THAT(monitor.serversToStop, IsEmpty());
  expectOneRefreshLater();
}

/// An application of processes 10, 11 and 12 that began at seconds 100, 110 and 120.
AppGroup threeProcesses() {
  AppGroup group = appGroup("Mail", 1, 2);
  group.processes.resize(3);
  for (std::size_t index = 0; index < 3; ++index) {
    group.processes[index].pid = static_cast<std::int32_t>(10 + index);
    group.processes[index].startedAt = {100 + 10.0 * static_cast<double>(index)};
  }
  return group;
}

TEST_F(MonitorStoreActions, QuittingLeavesOutEveryProcessThatIsNoLongerTheOneShown) {
  restartOver({{10, 100}, {11, 999}});

  EXPECT_TRUE(store().quitApp(threeProcesses(), false));
  EXPECT_THAT(monitor.pidsToQuit, ElementsAre(10)) << "11 is another's number now, 12 has gone";
  expectOneRefreshLater();
}

TEST_F(MonitorStoreActions, QuittingAnApplicationOfWhichNothingIsLeftGivesFalseAndAsksNobody) {
  restartOver({{10, 101}, {11, 111}});

  EXPECT_FALSE(store().quitApp(threeProcesses(), true));
  EXPECT_THAT(monitor.log, IsEmpty());
  expectOneRefreshLater();
}

TEST_F(MonitorStoreActions, AProcessThatInheritedAShownNumberIsNotStopped) {
  restartOver({{10, 100}, {11, 999}});
  monitor.nextSnapshot.appGroups = {threeProcesses()};
  store().refreshTick();
  monitor.log.clear();

  EXPECT_FALSE(store().stopProcess(11, true));
  EXPECT_FALSE(store().stopProcess(12, true));
  EXPECT_THAT(monitor.log, IsEmpty());
  EXPECT_EQ(monitor.runLoop.delayedTasks.size(), 2U) << "and the usual refreshes follow";
  monitor.log.clear();
  EXPECT_TRUE(store().stopProcess(10, true));
  EXPECT_THAT(monitor.log, ElementsAre("stopProcess 10 by force"));
}

TEST_F(MonitorStoreActions, StoppingAllIdleServersLeavesOutNumbersThatChangedHands) {
  restartOver({{5, 50}, {6, 61}});
  monitor.nextSnapshot.idleServers.resize(2);
  monitor.nextSnapshot.idleServers[0].pid = 5;
  monitor.nextSnapshot.idleServers[0].startedAt = {50};
  monitor.nextSnapshot.idleServers[1].pid = 6;
  monitor.nextSnapshot.idleServers[1].startedAt = {60};
  store().refreshTick();

  store().stopAllIdleServers();
  ASSERT_EQ(monitor.serversToStop.size(), 1U);
  EXPECT_EQ(monitor.serversToStop[0].pid, 5);
}

TEST_F(MonitorStoreActions, EachStopSchedulesARefreshOfItsOwnAndLeavesTheTimerAlone) {
  monitor.runLoop.advance(1);
  store().stopProcess(1, false);
  monitor.runLoop.advance(0.1);
  store().stopProcess(2, false);
  monitor.runLoop.advance(0.5);
  EXPECT_EQ(monitor.ticks, 3);

  monitor.runLoop.advance(0.45);
  EXPECT_EQ(monitor.ticks, 4);
  EXPECT_EQ(monitor.runLoop.timers.size(), 1U);
}

TEST_F(MonitorStoreActions, ADelayedRefreshAfterTheStoresEndDoesNothing) {
  store().stopProcess(1, false);
  monitor.endStore();
  monitor.runLoop.advance(1);

  EXPECT_THAT(monitor.runLoop.delayedTasks, IsEmpty());
  EXPECT_EQ(monitor.ticks, 1);
}

TEST_F(MonitorStoreActions, AFanTargetIsForwardedAndFollowedByATickAtOnce) {
  store().setFanManual(1, 3000.5);
  EXPECT_THAT(monitor.log, ElementsAre("setFanTarget", "sampleTick"));
  store().setFanManual(0, std::nullopt);

  EXPECT_THAT(monitor.fanTargets, ElementsAre(Pair(1, std::optional<double>(3000.5)),
                                              Pair(0, std::optional<double>())));
  EXPECT_EQ(monitor.ticks, 3);
  EXPECT_THAT(monitor.runLoop.delayedTasks, IsEmpty());
}

TEST_F(MonitorStoreActions, ReloadingHistoryLooksBackFromTheClockByTheSelectedRange) {
  const std::vector<double> expected{3600, 21600, 86400, 604800, 2592000, 7776000, 31536000};
  std::size_t index = 0;
  for (const HistoryRangeOption range : allCases<HistoryRangeOption>()) {
    monitor.now += 1000;
    monitor.loadedSince.clear();
    store().setSelectedHistoryRange(range);
    EXPECT_THAT(monitor.loadedSince, IsEmpty());
    store().reloadHistory();
    const double since = monitor.now - expected[index++];
    EXPECT_THAT(monitor.loadedSince, ElementsAre(since, since)) << caseName(range);
  }
}

TEST_F(MonitorStoreActions, ReloadingHistoryFillsReadingsThenSummariesAndNotifiesARealChange) {
  const QSignalSpy readings(&store(), &MonitorStore::readingsChanged);
  const QSignalSpy summaries(&store(), &MonitorStore::appSummariesChanged);
  monitor.storedReadings.resize(2);
  store().reloadHistory();
  store().reloadHistory();
  EXPECT_THAT(monitor.log,
              ElementsAre("loadReadings", "loadAppSummaries", "loadReadings", "loadAppSummaries"));
  EXPECT_EQ(store().readings(), monitor.storedReadings);
  EXPECT_EQ(readings.count(), 1);
  EXPECT_EQ(summaries.count(), 0);

  monitor.storedSummaries.resize(1);
  store().reloadHistory();
  EXPECT_EQ(store().appSummaries(), monitor.storedSummaries);
  EXPECT_EQ(readings.count(), 1);
  EXPECT_EQ(summaries.count(), 1);
}

TEST_F(MonitorStoreActions, AnExportNamesBothFilesAndShowsThemReadingsFirst) {
  monitor.exported = {"/home/me/Downloads/readings.csv", "/home/me/Downloads/apps é.csv"};
  store().setSelectedHistoryRange(HistoryRangeOption::days7);
  store().exportHistoryCSVs();

  EXPECT_EQ(store().lastExportStatusMessage(),
            QStringLiteral("Exported readings.csv & apps é.csv to Downloads"));
  EXPECT_THAT(monitor.exportedSince, ElementsAre(monitor.now - 604800));
  EXPECT_THAT(monitor.revealed, ElementsAre(ElementsAre("/home/me/Downloads/readings.csv",
                                                        "/home/me/Downloads/apps é.csv")));
}

TEST_F(MonitorStoreActions, AnExportThatGivesNothingFails) {
  const auto before = store().readings();
  store().exportHistoryCSVs();

  EXPECT_EQ(store().lastExportStatusMessage(), QStringLiteral("Failed to export CSV files"));
  EXPECT_THAT(monitor.revealed, IsEmpty());
  EXPECT_EQ(store().readings(), before);
}

TEST_F(MonitorStoreActions, AnExportThatGivesOnlyOneOfTheTwoFilesFails) {
  for (const ExportedCSVFiles& files :
       {ExportedCSVFiles{"/d/readings.csv", std::nullopt},
        ExportedCSVFiles{std::nullopt, "/d/apps.csv"}, ExportedCSVFiles{}}) {
    monitor.exported = files;
    store().exportHistoryCSVs();
    EXPECT_EQ(store().lastExportStatusMessage(), QStringLiteral("Failed to export CSV files"));
  }
  EXPECT_THAT(monitor.revealed, IsEmpty());
}

TEST_F(MonitorStoreActions, AnExportsMessageNotifiesARealChangeOnly) {
  const QSignalSpy spy(&store(), &MonitorStore::lastExportStatusMessageChanged);
  EXPECT_EQ(store().property("lastExportStatusMessage").toString(), "");
  store().exportHistoryCSVs();
  store().exportHistoryCSVs();

  EXPECT_EQ(spy.count(), 1);
  EXPECT_EQ(store().property("lastExportStatusMessage").toString(), "Failed to export CSV files");
}

TEST_F(MonitorStoreActions, TheHeadlineIsAboutTheLastTickInTheChosenUnit) {
  monitor.nextSnapshot.system.thermal.cpuCelsius = 50;
  monitor.nextSnapshot.system.cpuPercent = 7;
  store().refreshTick();
  EXPECT_EQ(store().whatsWrongHeadline(),
            "Your Mac is running smoothly — CPU 7%, Memory pressure Normal, 50°C.");

  store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_EQ(store().whatsWrongHeadline(),
            "Your Mac is running smoothly — CPU 7%, Memory pressure Normal, 122°F.");
}

}  // namespace
}  // namespace korvantis
