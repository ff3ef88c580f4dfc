#include <QMetaMethod>
#include <QSignalSpy>
#include <QVariant>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using test::ScriptedMonitor;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Counts every notification of a store by its name.
class Notifications {
 public:
  explicit Notifications(MonitorStore& store) {
    const QMetaObject& meta = *store.metaObject();
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
      const QMetaMethod method = meta.method(index);
      if (method.methodType() != QMetaMethod::Signal) continue;
      spies_[method.name().toStdString()] = std::make_unique<QSignalSpy>(&store, method);
    }
  }

  /// The names of those that came since the last question, in the order of the alphabet.
  std::vector<std::string> take() {
    std::vector<std::string> names;
    for (const auto& [name, spy] : spies_) {
      for (qsizetype count = 0; count < spy->count(); ++count) names.push_back(name);
      spy->clear();
    }
    return names;
  }

 private:
  std::map<std::string, std::unique_ptr<QSignalSpy>> spies_;
};

struct RingCase {
  const char* name;
  const QList<double>& (MonitorStore::*ring)() const;
  double seed;
  double value;
};

void PrintTo(const RingCase& ring, std::ostream* stream) {
  *stream << ring.name;
}

/// A tick whose every ring value differs from all seeds and from each other.
EngineSnapshot distinctSnapshot() {
  EngineSnapshot snapshot;
  SystemSample& system = snapshot.system;
  system.cpuPercent = 11;
  system.memoryUsedBytes = 3;
  system.memoryTotalBytes = 4;
  system.gpuPercent = 13;
  system.neuralEnginePercent = 14;
  system.networkInBytesPerSec = 15;
  system.networkOutBytesPerSec = 16;
  system.diskReadBytesPerSec = 17;
  system.diskWriteBytesPerSec = 18;
  system.thermal.cpuCelsius = 19;
  system.thermal.systemPowerWatts = 20;
  return snapshot;
}

class MonitorStoreRing : public ::testing::TestWithParam<RingCase> {
 protected:
  const QList<double>& ring() { return (monitor.store().*GetParam().ring)(); }

  ScriptedMonitor monitor;
};

TEST_P(MonitorStoreRing, HoldsItsFortySeedsAndTheFirstTicksValueRightAfterStart) {
  monitor.nextSnapshot = distinctSnapshot();

  ASSERT_EQ(ring().size(), 41);
  for (int index = 0; index < 40; ++index) EXPECT_EQ(ring()[index], GetParam().seed);
  EXPECT_EQ(ring().back(), GetParam().value);
}

TEST_P(MonitorStoreRing, GrowsTo60WithTick20AndThenLosesItsFirstSeed) {
  monitor.nextSnapshot = distinctSnapshot();
  monitor.store();
  while (monitor.ticks < 20) monitor.store().refreshTick();
  ASSERT_EQ(ring().size(), 60);
  EXPECT_EQ(ring().count(GetParam().seed), 40);

  monitor.store().refreshTick();
  EXPECT_EQ(ring().size(), 60);
  EXPECT_EQ(ring().count(GetParam().seed), 39);
  EXPECT_EQ(ring().front(), GetParam().seed);
  EXPECT_EQ(ring().back(), GetParam().value);
}

TEST_P(MonitorStoreRing, IsWhatItsPropertyGives) {
  EXPECT_EQ(monitor.store().property(GetParam().name).value<QList<double>>(), ring());
}

INSTANTIATE_TEST_SUITE_P(
    EveryRing, MonitorStoreRing,
    ::testing::Values(RingCase{"cpuHistory", &MonitorStore::cpuHistory, 8.0, 11},
                      RingCase{"memoryHistory", &MonitorStore::memoryHistory, 45.0, 75},
                      RingCase{"gpuHistory", &MonitorStore::gpuHistory, 5.0, 13},
                      RingCase{"aneHistory", &MonitorStore::aneHistory, 0.0, 14},
                      RingCase{"netInHistory", &MonitorStore::netInHistory, 1024.0, 15},
                      RingCase{"netOutHistory", &MonitorStore::netOutHistory, 512.0, 16},
                      RingCase{"diskReadHistory", &MonitorStore::diskReadHistory, 0.0, 17},
                      RingCase{"diskWriteHistory", &MonitorStore::diskWriteHistory, 0.0, 18},
                      RingCase{"tempHistory", &MonitorStore::tempHistory, 44.0, 19},
                      RingCase{"powerHistory", &MonitorStore::powerHistory, 8.5, 20}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(MonitorStoreTick, AMemoryTotalOf0Appends0ToTheMemoryRing) {
  ScriptedMonitor monitor;
  monitor.nextSnapshot.system.memoryTotalBytes = 0;
  monitor.nextSnapshot.system.memoryUsedBytes = 5;

  EXPECT_EQ(monitor.store().memoryHistory().back(), 0);
}

TEST(MonitorStoreTick, ARingHoldsItsValuesOldestFirst) {
  ScriptedMonitor monitor;
  for (int tick = 1; tick <= 70; ++tick) {
    monitor.nextSnapshot.system.cpuPercent = tick;
    if (tick == 1) {
      monitor.store();
    } else {
      monitor.store().refreshTick();
    }
  }

  ASSERT_EQ(monitor.store().cpuHistory().size(), 60);
  for (int index = 0; index < 60; ++index)
    EXPECT_EQ(monitor.store().cpuHistory()[index], index + 11);
}

TEST(MonitorStoreTick, TheEngineGetsTheLimitsTheMutesAndTheHeatLimit) {
  ScriptedMonitor monitor;
  monitor.store();
  EXPECT_EQ(monitor.tickHotCelsius, 82.0);
  EXPECT_EQ(monitor.tickLimits, monitor.store().alerts()->appLimits());
  EXPECT_EQ(monitor.tickLimits.size(), 2U) << "the default ones, in the first tick already";
  EXPECT_THAT(monitor.tickMutes, IsEmpty());

  AppAlertsStore& alerts = *monitor.store().alerts();
  alerts.removeLimit(alerts.appLimits()[0].id);
  alerts.muteApp("/Applications/Mail.app", "Mail", std::nullopt, 24);
  monitor.store().look()->setHotThresholdCelsius(70.5);
  monitor.store().refreshTick();
  EXPECT_EQ(monitor.tickHotCelsius, 70.5);
  EXPECT_EQ(monitor.tickLimits.size(), 1U);
  EXPECT_EQ(monitor.tickLimits, alerts.appLimits());
  ASSERT_EQ(monitor.tickMutes.size(), 1U);
  EXPECT_EQ(monitor.tickMutes[0].until, Instant{monitor.now + 86400});
}

TEST(MonitorStoreTick, NotifiesWhatChangedOnly) {
  ScriptedMonitor monitor;
  monitor.nextSnapshot = distinctSnapshot();
  while (monitor.ticks < 110) monitor.store().refreshTick();
  Notifications notifications(monitor.store());

  monitor.store().refreshTick();
  EXPECT_THAT(notifications.take(), IsEmpty());

  monitor.nextSnapshot.system.gpuPercent = 99;
  monitor.store().refreshTick();
  EXPECT_THAT(notifications.take(), ElementsAre("gpuHistoryChanged", "snapshotChanged"));

  monitor.nextSnapshot.newInsights = {test::insight(InsightKind::runningHot, std::nullopt, 1)};
  monitor.store().refreshTick();
  EXPECT_THAT(notifications.take(),
              ElementsAre("gpuHistoryChanged", "insightsChanged", "snapshotChanged"));
}

TEST(MonitorStoreTick, EveryRingThatStillGrowsIsTold) {
  ScriptedMonitor monitor;
  monitor.store();
  Notifications notifications(monitor.store());
  monitor.store().refreshTick();

  EXPECT_THAT(notifications.take(),
              ElementsAre("aneHistoryChanged", "cpuHistoryChanged", "diskReadHistoryChanged",
                          "diskWriteHistoryChanged", "gpuHistoryChanged", "memoryHistoryChanged",
                          "netInHistoryChanged", "netOutHistoryChanged", "powerHistoryChanged",
                          "tempHistoryChanged"));
}

TEST(MonitorStoreTick, WhoeverIsToldOfTheSnapshotSeesTheWholeTick) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  monitor.nextSnapshot.system.thermal.systemPowerWatts = 77;
  monitor.nextSnapshot.newInsights = {test::insight(InsightKind::runningHot, std::nullopt, 1)};
  double watts = 0;
  std::size_t findings = 0;
  QObject::connect(&store, &MonitorStore::snapshotChanged, &store, [&] {
    watts = store.powerHistory().back();
    findings = store.insights().size();
  });
  store.refreshTick();

  EXPECT_EQ(watts, 77);
  EXPECT_EQ(findings, 1U);
}

TEST(MonitorStoreTick, ATickFromWithinANotificationLeavesTheLatestFigures) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  monitor.nextSnapshot.system.cpuPercent = 50;
  QObject::connect(&store, &MonitorStore::snapshotChanged, &store, [&] {
    if (monitor.ticks > 2) return;
    monitor.nextSnapshot.system.cpuPercent = 60;
    store.refreshTick();
  });
  double told = 0;
  store.setOnSnapshotUpdated(
      [&](const EngineSnapshot& snapshot) { told = snapshot.system.cpuPercent; });
  store.refreshTick();

  EXPECT_EQ(store.snapshot().system.cpuPercent, 60);
  EXPECT_EQ(store.cpuHistory().size(), 43);
  EXPECT_EQ(told, 60);
}

TEST(MonitorStoreTick, TheListenerIsCalledAtTheEndOfEachTickWithItsSnapshot) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  std::vector<std::string> order;
  QObject::connect(&store, &MonitorStore::snapshotChanged, &store,
                   [&] { order.emplace_back("notified"); });
  EngineSnapshot heard;
  store.setOnSnapshotUpdated([&](const EngineSnapshot& snapshot) {
    order.emplace_back("called");
    heard = snapshot;
  });
  monitor.nextSnapshot.system.cpuPercent = 71;
  store.refreshTick();
  store.refreshTick();

  EXPECT_THAT(order, ElementsAre("notified", "called", "called"));
  EXPECT_EQ(heard, monitor.nextSnapshot);
}

TEST(MonitorStoreTick, TheListenerMayReplaceItself) {
  ScriptedMonitor monitor;
  MonitorStore& store = monitor.store();
  int first = 0;
  int second = 0;
  store.setOnSnapshotUpdated([&](const EngineSnapshot&) {
    ++first;
    store.setOnSnapshotUpdated([&](const EngineSnapshot&) { ++second; });
    ++first;
  });
  store.refreshTick();
  store.refreshTick();
  store.setOnSnapshotUpdated(nullptr);
  store.refreshTick();

  EXPECT_EQ(first, 2);
  EXPECT_EQ(second, 1);
}

TEST(MonitorStoreTick, LoadsNoHistoryByItself) {
  ScriptedMonitor monitor;
  monitor.store();
  monitor.storedReadings.resize(4);
  monitor.runLoop.advance(20);

  EXPECT_EQ(monitor.ticks, 11);
  EXPECT_THAT(monitor.store().readings(), IsEmpty());
}

}  // namespace
}  // namespace korvantis
