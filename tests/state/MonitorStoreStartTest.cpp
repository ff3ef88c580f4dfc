#include <QVariant>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using test::ScriptedMonitor;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MonitorStoreStart, RunsInOneExactOrder) {
  ScriptedMonitor monitor;
  monitor.store();

  EXPECT_THAT(
      monitor.log,
      ElementsAre(
          "stringForKey Korvantis.themeMode", "AudioObjectGetPropertyDataSize",
          "boolForKey Korvantis.iMessageEnabled", "stringForKey Korvantis.iMessageRecipient",
          "boolForKey Korvantis.whatsAppEnabled", "stringForKey Korvantis.whatsAppPhone",
          "stringForKey Korvantis.whatsAppMode", "stringForKey Korvantis.whatsAppApiKeyOrWebhook",
          "stringForKey Korvantis.remoteSchedule", "readHardwareInfo", "startBridgeListener",
          "sampleTick", "loadReadings", "loadAppSummaries", "scheduleRepeatingTimer"));
}

TEST(MonitorStoreStart, ReadsTheHardwareOnceAndNeverAgain) {
  ScriptedMonitor monitor;
  monitor.hardware.chipName = "Twelve Cores";
  EXPECT_EQ(monitor.store().hardwareInfo().chipName, "Twelve Cores");

  monitor.hardware.chipName = "Other";
  monitor.runLoop.advance(60);
  EXPECT_EQ(monitor.store().hardwareInfo().chipName, "Twelve Cores");
  EXPECT_EQ(std::count(monitor.log.begin(), monitor.log.end(), "readHardwareInfo"), 1);
}

TEST(MonitorStoreStart, TheFirstTickReplacesTheDefaultSnapshotBeforeTheStoreIsThere) {
  ScriptedMonitor monitor;
  monitor.nextSnapshot.system.cpuPercent = 33;
  monitor.nextSnapshot.appGroups = {test::appGroup("Mail", 1, 2)};

  EXPECT_EQ(monitor.store().snapshot(), monitor.nextSnapshot);
  EXPECT_EQ(monitor.ticks, 1);
}

TEST(MonitorStoreStart, NavigationStartsFromItsTable) {
  ScriptedMonitor monitor;
  const MonitorStore& store = monitor.store();

  EXPECT_EQ(store.selectedPane(), OstrelPane::overview);
  EXPECT_EQ(store.selectedProcessSubTab(), ProcessesSubTab::apps);
  EXPECT_EQ(store.processSortField(), ProcessSortField::memory);
  EXPECT_EQ(store.processSearchText(), "");
  EXPECT_FALSE(store.showSystemProcesses());
  EXPECT_THAT(store.expandedAppGroupIDs(), IsEmpty());
  EXPECT_FALSE(store.showSettingsModal());
  EXPECT_EQ(store.selectedSettingsTab(), "Menu Bar");
}

TEST(MonitorStoreStart, ListsSelectionsAndIntervalStartFromTheirTable) {
  ScriptedMonitor monitor;
  const MonitorStore& store = monitor.store();

  EXPECT_THAT(store.insights(), IsEmpty());
  EXPECT_THAT(store.pinnedInsightIDs(), IsEmpty());
  EXPECT_EQ(store.selectedHistoryRange(), HistoryRangeOption::hour24);
  EXPECT_EQ(store.selectedHistoryMetric(), HistoryMetricKind::cpu);
  EXPECT_EQ(store.lastExportStatusMessage(), std::nullopt);
  EXPECT_EQ(store.refreshIntervalSeconds(), 2.0);
}

TEST(MonitorStoreStart, TheStoresThatItOwnsAreThere) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();

  EXPECT_EQ(store.property("look").value<LookStore*>(), store.look());
  EXPECT_EQ(store.property("menuBarSettings").value<MenuBarSettingsStore*>(),
            store.menuBarSettings());
  EXPECT_EQ(store.property("alerts").value<AppAlertsStore*>(), store.alerts());
  EXPECT_EQ(store.property("audioMixer").value<AudioMixerStore*>(), store.audioMixer());
  EXPECT_EQ(store.property("remoteAlerts").value<RemoteAlertStore*>(), store.remoteAlerts());
}

TEST(MonitorStoreStart, LoadsTheHistoryOfTheLast24Hours) {
  ScriptedMonitor monitor;
  monitor.storedReadings.resize(3);
  monitor.storedSummaries.resize(2);

  EXPECT_EQ(monitor.store().readings().size(), 3U);
  EXPECT_EQ(monitor.store().appSummaries().size(), 2U);
  EXPECT_THAT(monitor.loadedSince, Each(monitor.now - 86400));
}

TEST(MonitorStoreStart, TheBridgeIsGivenAProviderThatAnswersFromATickOfItsOwn) {
  ScriptedMonitor monitor;
  monitor.store();
  const int ticks = monitor.ticks;
  const double cpuPercent = monitor.store().snapshot().system.cpuPercent;
  monitor.nextSnapshot.system.cpuPercent = cpuPercent + 12.5;

  ASSERT_TRUE(monitor.provider);
  const auto reply = monitor.provider("status", nlohmann::json{{"command", "status"}});
  EXPECT_EQ(nlohmann::json::parse(reply.text().value_or("")).at("cpuPercent"), cpuPercent + 12.5);
  EXPECT_EQ(monitor.ticks, ticks + 1);
  EXPECT_EQ(monitor.store().snapshot().system.cpuPercent, cpuPercent)
      << "what the bridge saw does not reach the screens";
}

TEST(MonitorStoreStart, NothingOfTheStoreItselfOutlivesARestart) {
  ScriptedMonitor monitor;
  const Insight finding = test::insight(InsightKind::runningHot, std::nullopt, 5);
  monitor.nextSnapshot.newInsights = {finding};
  monitor.store().togglePinInsight(finding);
  monitor.store().setRefreshInterval(5);
  monitor.store().setSelectedPane(OstrelPane::sound);
  monitor.store().setSelectedHistoryRange(HistoryRangeOption::year1);
  monitor.runLoop.advance(300);
  EXPECT_EQ(monitor.store().cpuHistory().size(), 60);
  monitor.nextSnapshot.newInsights.clear();
  monitor.endStore();

  EXPECT_EQ(monitor.store().cpuHistory().size(), 41);
  EXPECT_THAT(monitor.store().insights(), IsEmpty());
  EXPECT_THAT(monitor.store().pinnedInsightIDs(), IsEmpty());
  EXPECT_EQ(monitor.store().refreshIntervalSeconds(), 2.0);
  EXPECT_EQ(monitor.store().selectedPane(), OstrelPane::overview);
  EXPECT_EQ(monitor.store().selectedHistoryRange(), HistoryRangeOption::hour24);
  for (const auto& [key, value] : monitor.userDefaults) {
    EXPECT_TRUE(key == "Korvantis.themeMode" || key.starts_with("Korvantis.iMessage") ||
                key.starts_with("Korvantis.whatsApp"))
        << key;
  }
}

TEST(MonitorStoreStart, AfterARelaunchTheUsersRulesAreBackAtTheirDefaults) {
  ScriptedMonitor monitor;
  AppAlertsStore& before = *monitor.store().alerts();
  const auto firstDefaults = before.appLimits();
  before.removeLimit(firstDefaults[0].id);
  before.addLimit("/Applications/Mail.app", "Mail", std::nullopt, AppLimitFigure::gpuPercent, 1, 1);
  before.muteApp("/Applications/Mail.app", "Mail", std::nullopt, 24);
  const auto settings = monitor.userDefaults;
  monitor.endStore();

  const AppAlertsStore& after = *monitor.store().alerts();
  ASSERT_EQ(after.appLimits().size(), 2U);
  EXPECT_EQ(after.appLimits()[0].appName, "Google Chrome") << "a removed default is back";
  EXPECT_EQ(after.appLimits()[1].appName, "Xcode") << "an added limit is gone";
  EXPECT_NE(after.appLimits()[0].id, firstDefaults[0].id);
  EXPECT_NE(after.appLimits()[1].id, firstDefaults[1].id);
  EXPECT_THAT(after.mutedApps(), IsEmpty()) << "a mute of 24 hours is gone";
  EXPECT_EQ(monitor.userDefaults, settings) << "nothing of it was stored";
}

TEST(MonitorStoreTimer, TicksEveryTwoSeconds) {
  ScriptedMonitor monitor;
  monitor.store();

  monitor.runLoop.advance(1.9);
  EXPECT_EQ(monitor.ticks, 1);
  monitor.runLoop.advance(0.2);
  EXPECT_EQ(monitor.ticks, 2);
  monitor.runLoop.advance(4);
  EXPECT_EQ(monitor.ticks, 4);
}

TEST(MonitorStoreTimer, AFiringTicksInATaskOfItsOwnOnTheMainThread) {
  ScriptedMonitor monitor;
  monitor.store();
  monitor.runLoop.timers.back()->fire();
  EXPECT_EQ(monitor.ticks, 1);

  monitor.runLoop.runTasks();
  EXPECT_EQ(monitor.ticks, 2);
}

TEST(MonitorStoreTimer, AnotherIntervalReplacesTheTimer) {
  ScriptedMonitor monitor;
  monitor.store();
  monitor.runLoop.advance(1);
  monitor.store().setRefreshInterval(5);

  EXPECT_EQ(monitor.store().refreshIntervalSeconds(), 5.0);
  ASSERT_EQ(monitor.runLoop.timers.size(), 2U);
  EXPECT_FALSE(monitor.runLoop.timers[0]->isValid);
  EXPECT_EQ(monitor.runLoop.timers[1]->period, 5.0);
  monitor.runLoop.advance(4.9);
  EXPECT_EQ(monitor.ticks, 1);
  monitor.runLoop.advance(0.2);
  EXPECT_EQ(monitor.ticks, 2);
}

TEST(MonitorStoreTimer, ThePresentIntervalRestartsItSoTheNextTickComesOneWholePeriodLater) {
  ScriptedMonitor monitor;
  monitor.store();
  monitor.runLoop.advance(1.5);
  monitor.store().setRefreshInterval(2.0);

  monitor.runLoop.advance(1.9);
  EXPECT_EQ(monitor.ticks, 1);
  monitor.runLoop.advance(0.2);
  EXPECT_EQ(monitor.ticks, 2);
}

TEST(MonitorStoreTimer, NoIntervalIsRefused) {
  ScriptedMonitor monitor;
  monitor.store().setRefreshInterval(0.001);
  EXPECT_EQ(monitor.runLoop.timers.back()->period, 0.001);
  monitor.store().setRefreshInterval(1e9);
  EXPECT_EQ(monitor.runLoop.timers.back()->period, 1e9);
}

TEST(MonitorStoreTimer, AFiringAfterTheStoresEndDoesNothing) {
  ScriptedMonitor monitor;
  monitor.store();
  const auto timer = monitor.runLoop.timers.back();
  monitor.endStore();
  EXPECT_FALSE(timer->isValid);

  timer->fire();
  monitor.runLoop.runTasks();
  EXPECT_EQ(monitor.ticks, 1);
}

TEST(MonitorStoreTimer, ATaskThatIsOnItsWayWhenTheStoreEndsDoesNothing) {
  ScriptedMonitor monitor;
  monitor.store();
  monitor.runLoop.timers.back()->fire();
  monitor.endStore();
  monitor.runLoop.runTasks();

  EXPECT_EQ(monitor.ticks, 1);
}

}  // namespace
}  // namespace korvantis
