#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>

#include "state/MenuBarSettingsStore.h"

namespace korvantis {
namespace {

using Readouts = std::set<MenuBarReadout>;

constexpr double kilobyte = 1024;

EngineSnapshot busySnapshot() {
  EngineSnapshot snapshot;
  SystemSample& system = snapshot.system;
  system.cpuPercent = 42.5;
  system.memoryUsedBytes = 3;
  system.memoryTotalBytes = 8;
  system.gpuPercent = 17.6;
  system.neuralEnginePercent = 3.4;
  system.networkInBytesPerSec = 2 * kilobyte;
  system.networkOutBytesPerSec = 900 * kilobyte;
  system.diskReadBytesPerSec = 1 * kilobyte;
  system.diskWriteBytesPerSec = 4 * kilobyte;
  system.thermal.cpuCelsius = 100;
  system.thermal.systemPowerWatts = 12.34;
  system.thermal.fans.resize(2);
  system.thermal.fans[0].currentRPM = 2345.6;
  system.thermal.fans[1].currentRPM = 1;
  system.battery.emplace().percentage = 81.2;
  snapshot.agentSessions.resize(3);
  return snapshot;
}

std::string summary(const MenuBarSettingsStore& store, const EngineSnapshot& snapshot,
                    bool useFahrenheit = false) {
  return store.formattedSummary(snapshot, useFahrenheit).toStdString();
}

std::string pieceFor(MenuBarReadout readout, const EngineSnapshot& snapshot,
                     bool useFahrenheit = false) {
  MenuBarSettingsStore store;
  store.setEnabledReadouts({readout});
  return summary(store, snapshot, useFahrenheit);
}

TEST(MenuBarSettingsStore, EveryFieldStartsFromItsTable) {
  const MenuBarSettingsStore store;

  EXPECT_EQ(store.enabledReadouts(),
            (Readouts{MenuBarReadout::cpu, MenuBarReadout::memory, MenuBarReadout::temperature,
                      MenuBarReadout::power}));
  EXPECT_EQ(store.displayStyle(), MenuBarDisplayStyle::both);
  EXPECT_EQ(store.colorMode(), MenuBarColorMode::strainOnly);
  EXPECT_TRUE(store.showStrainDot());
}

TEST(MenuBarSettingsStore, IsEnabledTellsMembership) {
  const MenuBarSettingsStore store;

  EXPECT_TRUE(store.isEnabled(MenuBarReadout::power));
  EXPECT_FALSE(store.isEnabled(MenuBarReadout::agents));
}

TEST(MenuBarSettingsStore, ToggleTurnsOnAndOff) {
  MenuBarSettingsStore store;
  const QSignalSpy spy(&store, &MenuBarSettingsStore::enabledReadoutsChanged);
  store.toggle(MenuBarReadout::agents);
  EXPECT_TRUE(store.isEnabled(MenuBarReadout::agents));
  store.toggle(MenuBarReadout::agents);
  EXPECT_FALSE(store.isEnabled(MenuBarReadout::agents));
  EXPECT_EQ(spy.count(), 2);
}

TEST(MenuBarSettingsStore, ToggleOnTheLastEnabledReadoutLeavesTheSetAndNotifiesNobody) {
  MenuBarSettingsStore store;
  store.setEnabledReadouts({MenuBarReadout::gpu});
  const QSignalSpy spy(&store, &MenuBarSettingsStore::enabledReadoutsChanged);
  store.toggle(MenuBarReadout::gpu);

  EXPECT_EQ(store.enabledReadouts(), Readouts{MenuBarReadout::gpu});
  EXPECT_EQ(spy.count(), 0);
}

TEST(MenuBarSettingsStore, OfTwoReadoutsOneCanBeTurnedOff) {
  MenuBarSettingsStore store;
  store.setEnabledReadouts({MenuBarReadout::gpu, MenuBarReadout::disk});
  store.toggle(MenuBarReadout::gpu);

  EXPECT_EQ(store.enabledReadouts(), Readouts{MenuBarReadout::disk});
}

TEST(MenuBarSettingsStore, SettersNotifyExactlyOnARealChange) {
  MenuBarSettingsStore store;
  const QSignalSpy style(&store, &MenuBarSettingsStore::displayStyleChanged);
  const QSignalSpy color(&store, &MenuBarSettingsStore::colorModeChanged);
  const QSignalSpy dot(&store, &MenuBarSettingsStore::showStrainDotChanged);
  const QSignalSpy readouts(&store, &MenuBarSettingsStore::enabledReadoutsChanged);
  for (int time = 0; time < 2; ++time) {
    store.setProperty("displayStyle", "graph");
    store.setProperty("colorMode", "colour");
    store.setProperty("showStrainDot", false);
    store.setEnabledReadouts({MenuBarReadout::fans});
  }

  EXPECT_EQ(store.displayStyle(), MenuBarDisplayStyle::graph);
  EXPECT_EQ(store.colorMode(), MenuBarColorMode::colour);
  EXPECT_FALSE(store.showStrainDot());
  EXPECT_EQ(style.count(), 1);
  EXPECT_EQ(color.count(), 1);
  EXPECT_EQ(dot.count(), 1);
  EXPECT_EQ(readouts.count(), 1);
}

TEST(MenuBarSettingsStore, ANameThatIsNoCaseChangesNothing) {
  MenuBarSettingsStore store;
  store.setDisplayStyleName("Sparkline");
  store.setColorModeName("color");

  EXPECT_EQ(store.displayStyle(), MenuBarDisplayStyle::both);
  EXPECT_EQ(store.colorMode(), MenuBarColorMode::strainOnly);
}

TEST(MenuBarSummary, EveryReadoutHasItsPiece) {
  const EngineSnapshot snapshot = busySnapshot();

  EXPECT_EQ(pieceFor(MenuBarReadout::cpu, snapshot), "CPU 42%");
  EXPECT_EQ(pieceFor(MenuBarReadout::memory, snapshot), "MEM 38%");
  EXPECT_EQ(pieceFor(MenuBarReadout::gpu, snapshot), "GPU 18%");
  EXPECT_EQ(pieceFor(MenuBarReadout::neuralEngine, snapshot), "ANE 3%");
  EXPECT_EQ(pieceFor(MenuBarReadout::network, snapshot), "↓2 KB/s");
  EXPECT_EQ(pieceFor(MenuBarReadout::disk, snapshot), "D 5 KB/s");
  EXPECT_EQ(pieceFor(MenuBarReadout::temperature, snapshot), "100°C");
  EXPECT_EQ(pieceFor(MenuBarReadout::temperature, snapshot, true), "212°F");
  EXPECT_EQ(pieceFor(MenuBarReadout::fans, snapshot), "2346 RPM");
  EXPECT_EQ(pieceFor(MenuBarReadout::battery, snapshot), "81%");
  EXPECT_EQ(pieceFor(MenuBarReadout::power, snapshot), "12.3W");
  EXPECT_EQ(pieceFor(MenuBarReadout::agents, snapshot), "AI 3");
}

TEST(MenuBarSummary, AMemoryTotalOf0Gives0Percent) {
  EngineSnapshot snapshot = busySnapshot();
  snapshot.system.memoryTotalBytes = 0;

  EXPECT_EQ(pieceFor(MenuBarReadout::memory, snapshot), "MEM 0%");
}

TEST(MenuBarSummary, WithNoFansAnEnabledFansReadoutShowsAValueOf0) {
  EngineSnapshot snapshot = busySnapshot();
  snapshot.system.thermal.fans.clear();

  EXPECT_EQ(pieceFor(MenuBarReadout::fans, snapshot), "0 RPM");
}

TEST(MenuBarSummary, ReadsCPUFirstWhateverTheOrderOfEnabling) {
  MenuBarSettingsStore store;
  store.setEnabledReadouts({MenuBarReadout::network});
  store.toggle(MenuBarReadout::cpu);

  EXPECT_EQ(summary(store, busySnapshot()), "CPU 42%  ↓2 KB/s");
}

TEST(MenuBarSummary, JoinsItsPiecesByTwoBlanks) {
  const MenuBarSettingsStore store;

  EXPECT_EQ(summary(store, busySnapshot()), "CPU 42%  MEM 38%  100°C  12.3W");
}

TEST(MenuBarSummary, WithoutABatteryThatPieceIsSimplyMissing) {
  EngineSnapshot snapshot = busySnapshot();
  snapshot.system.battery.reset();
  MenuBarSettingsStore store;
  store.setEnabledReadouts({MenuBarReadout::cpu, MenuBarReadout::battery, MenuBarReadout::agents});

  EXPECT_EQ(summary(store, snapshot), "CPU 42%  AI 3");
}

TEST(MenuBarSummary, WithoutAnyPieceItIsTheNameOfTheProgram) {
  EngineSnapshot snapshot = busySnapshot();
  snapshot.system.battery.reset();

  EXPECT_EQ(pieceFor(MenuBarReadout::battery, snapshot), "Korvantis");
}

}  // namespace
}  // namespace korvantis
