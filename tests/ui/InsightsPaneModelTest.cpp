#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "analysis/InsightEngine.h"
#include "ui/ScriptedStore.h"
#include "ui/panes/InsightsPaneModel.h"

namespace korvantis {
namespace {

class InsightsPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  InsightsPaneModel model;
  QAbstractItemModelTester tester{model.insights(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};

  void start() { model.setStore(&scripted.store()); }
  QVariant value(int row, InsightListModel::Role role) {
    return model.insights()->index(row).data(role);
  }
  QString at(int row, InsightListModel::Role role) { return value(row, role).toString(); }
  QString idAt(int row) { return at(row, InsightListModel::InsightID); }
  const std::vector<MutedApp>& mutes() { return scripted.store().alerts()->mutedApps(); }
};

TEST_F(InsightsPaneModelTest, WithNoFindingsTheHeaderShowsACountOf0AndNothingCanBeCleared) {
  start();
  EXPECT_EQ(model.findingsTitle(), QStringLiteral("ACTIVE & RECENT INSIGHTS (0)"));
  EXPECT_FALSE(model.hasFindings());
  EXPECT_EQ(model.insights()->rowCount(), 0);
}

TEST_F(InsightsPaneModelTest, ListsTheFindingsOfTheStoreInItsOrder) {
  scripted.next.newInsights = makeInsights(3);
  start();
  EXPECT_EQ(model.findingsTitle(), QStringLiteral("ACTIVE & RECENT INSIGHTS (3)"));
  EXPECT_TRUE(model.hasFindings());
  ASSERT_EQ(model.insights()->rowCount(), 3);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 2"));
  EXPECT_EQ(at(1, InsightListModel::Title), QStringLiteral("Finding 1"));
  EXPECT_EQ(at(0, InsightListModel::MetricText), QStringLiteral("150% CPU"));
  EXPECT_EQ(at(0, InsightListModel::Detail),
            QStringLiteral("It has used the processor for minutes."));
  EXPECT_EQ(at(0, InsightListModel::IconName), QStringLiteral("cpu.fill"));
  EXPECT_EQ(at(0, InsightListModel::Description),
            QStringLiteral("Finding 2, 150% CPU. It has used the processor for minutes."));
}

TEST_F(InsightsPaneModelTest, EveryKindHasTheIconOfItsKind) {
  for (const InsightKind kind : allCases<InsightKind>()) {
    Insight insight;
    insight.kind = kind;
    InsightListModel list;
    list.setInsights({insight}, {});
    EXPECT_EQ(list.index(0).data(InsightListModel::IconName).toString().toStdString(),
              iconName(kind));
  }
}

TEST_F(InsightsPaneModelTest, ANewFindingEntersAndTheOthersStayUntouched) {
  scripted.next.newInsights = makeInsights(2);
  start();
  QSignalSpy inserted(model.insights(), &QAbstractItemModel::rowsInserted);
  QSignalSpy changed(model.insights(), &QAbstractItemModel::dataChanged);
  scripted.next.newInsights = makeInsights(3);
  scripted.tick();
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(changed.size(), 0);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 2"));
}

TEST_F(InsightsPaneModelTest, ATickWithNothingNewSaysNothing) {
  scripted.next.newInsights = makeInsights(30);
  scripted.next.appGroups = {makeGroup("editor", {makeProcess(1, "editor")})};
  start();
  QSignalSpy inserted(model.insights(), &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(model.insights(), &QAbstractItemModel::rowsRemoved);
  QSignalSpy moved(model.insights(), &QAbstractItemModel::rowsMoved);
  QSignalSpy changed(model.insights(), &QAbstractItemModel::dataChanged);
  QSignalSpy headline(&model, &InsightsPaneModel::headlineChanged);
  QSignalSpy load(&model, &InsightsPaneModel::cpuLoadChanged);
  QSignalSpy title(&model, &InsightsPaneModel::findingsTitleChanged);
  scripted.tick();
  for (const QSignalSpy* spy : {&inserted, &removed, &moved, &changed, &headline, &load, &title}) {
    EXPECT_EQ(spy->size(), 0) << spy->signal().toStdString();
  }
}

TEST_F(InsightsPaneModelTest, DismissTakesTheFindingOffTheListAndOutOfThePins) {
  scripted.next.newInsights = makeInsights(2);
  start();
  model.togglePin(idAt(0));
  ASSERT_EQ(scripted.store().pinnedInsightIDs().size(), 1);
  model.dismiss(idAt(0));
  ASSERT_EQ(model.insights()->rowCount(), 1);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 0"));
  EXPECT_TRUE(scripted.store().pinnedInsightIDs().empty());
}

TEST_F(InsightsPaneModelTest, PinAndUnpinChangeTheButtonAtOnceAndTheOrderWithTheNextTick) {
  scripted.next.newInsights = makeInsights(3);
  start();
  EXPECT_FALSE(value(2, InsightListModel::IsPinned).toBool());
  EXPECT_EQ(at(2, InsightListModel::PinIconName), QStringLiteral("pin.fill"));
  EXPECT_EQ(at(2, InsightListModel::PinHint), QStringLiteral("Pin Insight"));
  const QString id = idAt(2);
  model.togglePin(id);
  EXPECT_EQ(idAt(2), id);
  EXPECT_TRUE(value(2, InsightListModel::IsPinned).toBool());
  EXPECT_EQ(at(2, InsightListModel::PinIconName), QStringLiteral("pin.slash.fill"));
  EXPECT_EQ(at(2, InsightListModel::PinHint), QStringLiteral("Unpin Insight"));
  EXPECT_EQ(at(2, InsightListModel::Description),
            QStringLiteral("Finding 0, 150% CPU. It has used the processor for minutes. Pinned."));
  QSignalSpy moved(model.insights(), &QAbstractItemModel::rowsMoved);
  scripted.tick();
  EXPECT_EQ(moved.size(), 1);
  EXPECT_EQ(idAt(0), id);
  model.togglePin(id);
  EXPECT_FALSE(value(0, InsightListModel::IsPinned).toBool());
}

TEST_F(InsightsPaneModelTest, AFindingIsPinnedByTheStoresIdsNotByItsOwnRecord) {
  scripted.next.newInsights = makeInsights(1);
  scripted.next.newInsights[0].isPinned = true;
  start();
  EXPECT_FALSE(value(0, InsightListModel::IsPinned).toBool());
}

TEST_F(InsightsPaneModelTest, ClearingLeavesThePinnedFindings) {
  scripted.next.newInsights = makeInsights(3);
  start();
  const QString id = idAt(1);
  model.togglePin(id);
  scripted.store().clearUnpinnedInsights();
  ASSERT_EQ(model.insights()->rowCount(), 1);
  EXPECT_EQ(idAt(0), id);
  EXPECT_EQ(model.findingsTitle(), QStringLiteral("ACTIVE & RECENT INSIGHTS (1)"));
}

TEST_F(InsightsPaneModelTest, OnlyAFindingWithBothTheIdAndTheNameOfAnAppCanBeSnoozed) {
  Insight without;
  Insight withID;
  withID.targetAppID = "app";
  Insight withName;
  withName.targetAppName = "App";
  Insight withBoth = withID;
  withBoth.targetAppName = "App";
  InsightListModel list;
  list.setInsights({without, withID, withName, withBoth}, {});
  std::vector<bool> canSnooze;
  for (int row = 0; row < 4; ++row) {
    canSnooze.push_back(list.index(row).data(InsightListModel::CanSnooze).toBool());
  }
  EXPECT_EQ(canSnooze, (std::vector{false, false, false, true}));
}

TEST_F(InsightsPaneModelTest, SnoozeMutesTheAppForADayAndDismissesTheFinding) {
  scripted.next.newInsights = makeInsights(2);
  start();
  model.snooze(idAt(1));
  ASSERT_EQ(model.insights()->rowCount(), 1);
  EXPECT_EQ(at(0, InsightListModel::Title), QStringLiteral("Finding 1"));
  EXPECT_EQ(mutes(),
            (std::vector<MutedApp>{{"app-0", "App 0", std::nullopt, Instant{1000 + 24 * 3600.0}}}));
}

TEST_F(InsightsPaneModelTest, AFindingWithoutATargetIsNeverSnoozed) {
  scripted.next.newInsights = makeInsights(1);
  scripted.next.newInsights[0].targetAppName.reset();
  start();
  model.snooze(idAt(0));
  EXPECT_EQ(model.insights()->rowCount(), 1);
  EXPECT_TRUE(mutes().empty());
}

TEST_F(InsightsPaneModelTest, AnIdThatIsNotListedChangesNothing) {
  scripted.next.newInsights = makeInsights(1);
  start();
  const QString id = idAt(0);
  model.dismiss(id);
  scripted.next.newInsights.clear();
  for (const QString& each : {id, QString(), QStringLiteral("no id")}) {
    model.togglePin(each);
    model.snooze(each);
    model.dismiss(each);
    model.removeLimit(each);
  }
  EXPECT_TRUE(scripted.store().pinnedInsightIDs().empty());
  EXPECT_TRUE(mutes().empty());
  EXPECT_EQ(model.limits()->rowCount(), 2);
}

TEST_F(InsightsPaneModelTest,
       SnoozingAMemoryPressureFindingMutesTheTopHolderAndTheRulesGoOnFiring) {
  double now = 0;
  InsightEngine engine(Clock{[&now] { return now; }}, systemRandomCalls());
  SystemSample system;
  system.memoryPressure = MemoryPressureLevel::warning;
  system.diskWriteBytesPerSec = 200 << 20;
  const std::vector<AppGroup> groups{makeGroup("holder"), makeGroup("other")};
  const auto evaluate = [&](const std::vector<MutedApp>& muted) {
    return engine.evaluate(system, groups, {}, {}, muted, 82).newInsights;
  };
  scripted.next.newInsights = evaluate({});
  start();
  ASSERT_EQ(model.insights()->rowCount(), 2);
  ASSERT_EQ(at(0, InsightListModel::Title), QStringLiteral("Memory pressure is warning"));
  EXPECT_TRUE(at(0, InsightListModel::Detail).endsWith(QStringLiteral("Top holder: holder.")));
  model.snooze(idAt(0));
  ASSERT_EQ(mutes().size(), 1);
  EXPECT_EQ(mutes()[0].appID, groups[0].id);
  EXPECT_EQ(mutes()[0].appName, "holder");
  now = 600;
  scripted.next.newInsights = evaluate(mutes());
  ASSERT_EQ(scripted.next.newInsights.size(), 4);
  EXPECT_EQ(scripted.next.newInsights[0].kind, InsightKind::diskBurst);
  EXPECT_EQ(scripted.next.newInsights[1].kind, InsightKind::memoryPressure);
  EXPECT_EQ(scripted.next.newInsights[1].targetAppName, "holder");
}

TEST_F(InsightsPaneModelTest, SaysTheHeadlineOfTheStore) {
  start();
  scripted.next.activeStrains = {StrainKind::cpu};
  scripted.tick();
  EXPECT_EQ(model.headline(), scripted.store().whatsWrongHeadline());
  EXPECT_EQ(model.headline(), QStringLiteral("Active system strain detected on: CPU."));
}

TEST_F(InsightsPaneModelTest, ThePillsSayLoadPressureHeatAndForgottenServers) {
  SystemSample& system = scripted.next.system;
  system.cpuPercent = 12.25;
  system.loadAverage1m = 1.255;
  system.memoryPressure = MemoryPressureLevel::critical;
  system.thermal.cpuCelsius = 62.5;
  system.thermal.systemPowerWatts = 18.25;
  start();
  EXPECT_EQ(model.cpuLoad(), QStringLiteral("12.2% (1m 1.25)"));
  EXPECT_EQ(model.memoryPressure(), QStringLiteral("Critical"));
  EXPECT_EQ(model.thermal(), QStringLiteral("62°C · 18.2W"));
  EXPECT_EQ(model.idleServers(), QStringLiteral("0"));
  EXPECT_FALSE(model.hasIdleServers());
  scripted.next.idleServers.resize(12);
  system.memoryPressure = MemoryPressureLevel::warning;
  scripted.tick();
  EXPECT_EQ(model.idleServers(), QStringLiteral("12"));
  EXPECT_TRUE(model.hasIdleServers());
  EXPECT_EQ(model.memoryPressure(), QStringLiteral("Warning"));
}

TEST_F(InsightsPaneModelTest, TemperaturesFollowTheirUnitAtOnce) {
  scripted.next.system.thermal.cpuCelsius = 100;
  scripted.next.system.thermal.systemPowerWatts = 0;
  start();
  scripted.store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_EQ(model.thermal(), QStringLiteral("212°F · 0.0W"));
  EXPECT_TRUE(model.headline().contains(QStringLiteral("212°F")));
}

TEST_F(InsightsPaneModelTest, TheButtonOfTheBriefSaysThatItIsUnderWay) {
  start();
  EXPECT_EQ(model.sendBriefText(), QStringLiteral("Send Instant Brief"));
  model.sendInstantBrief();
  EXPECT_EQ(model.sendBriefText(), QStringLiteral("Sending…"));
  scripted.runBackground();
  EXPECT_EQ(model.sendBriefText(), QStringLiteral("Send Instant Brief"));
  EXPECT_EQ(scripted.store().remoteAlerts()->lastStatusMessage(),
            QStringLiteral("Enable iMessage or WhatsApp first."));
  EXPECT_TRUE(scripted.store().remoteAlerts()->lastStatusIsError());
}

TEST_F(InsightsPaneModelTest, TheBriefIsOnTheLastTickAndGoesOverTheChannelsThatAreOn) {
  scripted.hardware.chipName = "Chip";
  scripted.next.system.cpuPercent = 33.3;
  start();
  RemoteAlertStore& alerts = *scripted.store().remoteAlerts();
  alerts.setWhatsAppEnabled(true);
  alerts.setWhatsAppPhone(QStringLiteral("+15551234567"));
  alerts.setWhatsAppApiKeyOrWebhook(QStringLiteral("key"));
  model.sendInstantBrief();
  scripted.runBackground();
  EXPECT_EQ(scripted.sent, std::vector<std::string>{"request"});
  const std::string& url = scripted.requestedURL;
  EXPECT_NE(url.find("Chip"), std::string::npos) << url;
  EXPECT_NE(url.find("33.3"), std::string::npos) << url;
  EXPECT_NE(url.find("Instant"), std::string::npos) << url;
  EXPECT_FALSE(alerts.lastStatusIsError());
  EXPECT_FALSE(alerts.lastStatusMessage()->contains(QStringLiteral("iMessage")));
}

TEST_F(InsightsPaneModelTest, ConfigureOpensTheSettingsAtTheRemoteAlerts) {
  start();
  model.configureBriefs();
  EXPECT_EQ(scripted.store().selectedSettingsTab(), QStringLiteral("Remote Alerts"));
  EXPECT_TRUE(scripted.store().showSettingsModal());
}

TEST_F(InsightsPaneModelTest, AnotherStoreIsFollowedAndTheFirstNoMore) {
  scripted.next.newInsights = makeInsights(2);
  start();
  ScriptedStore other;
  model.setStore(&other.store());
  EXPECT_EQ(model.insights()->rowCount(), 0);
  scripted.next.newInsights = makeInsights(3);
  scripted.next.system.cpuPercent = 99;
  scripted.tick();
  scripted.store().alerts()->setAppLimits({});
  scripted.store().remoteAlerts()->sendManualBrief({}, "", false, false);
  EXPECT_EQ(model.insights()->rowCount(), 0);
  EXPECT_EQ(model.limits()->rowCount(), 2);
  EXPECT_EQ(model.cpuLoad(), QStringLiteral("0.0% (1m 0.00)"));
  EXPECT_EQ(model.sendBriefText(), QStringLiteral("Send Instant Brief"));
}

}  // namespace
}  // namespace korvantis
