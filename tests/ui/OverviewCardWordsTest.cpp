#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/OverviewCardWords.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {
namespace {

namespace Words = OverviewCardWords;

constexpr std::uint64_t gigabyte = std::uint64_t{1} << 30;

class OverviewCardWordsTest : public testing::Test {
 protected:
  const LookStore& look() { return *scripted.store().look(); }
  AppGroup& addGroup(const std::string& name, double cpuPercent, std::uint64_t memoryBytes) {
    AppGroup group = makeGroup(name);
    group.cpuPercent = cpuPercent;
    group.memoryBytes = memoryBytes;
    group.kind = AppGroupKind::app;
    snapshot.appGroups.push_back(group);
    return snapshot.appGroups.back();
  }

  ScriptedStore scripted;
  EngineSnapshot snapshot;
  HardwareInfo hardware;
};

TEST_F(OverviewCardWordsTest, TheProcessorsCardSaysLoadCoresAndWhoUsesIt) {
  snapshot.system.cpuPercent = 12.345;
  snapshot.system.loadAverage1m = 1.5;
  snapshot.system.cpuUserPercent = 8.5;
  snapshot.system.cpuSystemPercent = 3.4;
  hardware.performanceCores = 6;
  hardware.efficiencyCores = 4;
  addGroup("First", 50, 1);
  addGroup("Second", 50, 1);
  const CPUCard card = Words::cpu(snapshot, hardware);
  EXPECT_EQ(card.headline, "12.3%");
  EXPECT_EQ(card.subheadline, "Load 1.50");
  EXPECT_EQ(card.loadText, "User 8% · Sys 3%");
  EXPECT_EQ(card.coresText, "6P + 4E");
  EXPECT_EQ(card.performanceCores, 6);
  // The first one on a tie.
  EXPECT_EQ(card.topName, "First");
  EXPECT_EQ(card.topPercent, "50.0%");
}

TEST_F(OverviewCardWordsTest, ACoreAtZeroPercentStillShowsABarOf005) {
  snapshot.system.perCoreCPUPercent = {0, 4, 50, 100, 130};
  EXPECT_EQ(Words::cpu(snapshot, hardware).coreShares, QList<double>({0.05, 0.05, 0.5, 1, 1}));
}

TEST_F(OverviewCardWordsTest, WithoutApplicationsNobodyUsesTheProcessor) {
  EXPECT_EQ(Words::cpu(snapshot, hardware).topName, "");
}

TEST_F(OverviewCardWordsTest, TheMemorysCardSaysHowMuchOfWhat) {
  SystemSample system;
  system.memoryTotalBytes = 16 * gigabyte;
  system.memoryUsedBytes = 5 * gigabyte + gigabyte / 2;
  system.memoryAppBytes = 4 * gigabyte;
  system.memoryWiredBytes = 2 * gigabyte;
  system.memoryCompressedBytes = 20 * gigabyte;
  system.swapUsedBytes = 0;
  system.memoryPressure = MemoryPressureLevel::warning;
  const MemoryCard card = Words::memory(system);
  EXPECT_EQ(card.headline, "5.5 / 16 GB");
  EXPECT_EQ(card.subheadline, "Warning");
  EXPECT_EQ(card.pressureColor, OstrelTheme::amberWarning());
  EXPECT_EQ(card.appShare, 0.25);
  EXPECT_EQ(card.wiredShare, 0.125);
  EXPECT_EQ(card.compressedShare, 1.0);
  EXPECT_EQ(card.appText, "App 4.0 GB");
  EXPECT_EQ(card.wiredText, "Wired 2.0 GB");
  EXPECT_EQ(card.swapText, "Swap 0 B");
}

TEST_F(OverviewCardWordsTest, EveryPressureHasItsColourAndATotalOfZeroCountsAsOne) {
  SystemSample system;
  system.memoryTotalBytes = 0;
  system.memoryAppBytes = 5;
  EXPECT_EQ(Words::memory(system).appShare, 1.0);
  system.memoryPressure = MemoryPressureLevel::normal;
  EXPECT_EQ(Words::memory(system).pressureColor, OstrelTheme::safeGreen());
  system.memoryPressure = MemoryPressureLevel::critical;
  EXPECT_EQ(Words::memory(system).pressureColor, OstrelTheme::strainRed());
}

TEST_F(OverviewCardWordsTest, TheGPUsCardSaysWhoHoldsTheNeuralEngine) {
  SystemSample system;
  system.gpuPercent = 41.6;
  system.neuralEnginePercent = 18.5;
  system.neuralEngineWatts = 1.4;
  system.neuralEngineHolder = "Xcode";
  system.gpuMemoryBytes = 2 * gigabyte;
  hardware.gpuCores = 14;
  hardware.neuralEngineCores = 16;
  GPUCard card = Words::gpu(system, hardware);
  EXPECT_EQ(card.headline, "GPU 42% · ANE 18%");
  EXPECT_EQ(card.subheadline, "14c GPU");
  EXPECT_EQ(card.memoryText, "2.0 GB");
  EXPECT_EQ(card.neuralText, "Neural Engine (16c)");
  EXPECT_TRUE(card.isNeuralBusy);
  EXPECT_EQ(card.neuralWatts, "1.4 W");
  EXPECT_EQ(card.holderText, "Active: Xcode");
  EXPECT_TRUE(card.hasHolder);
  system.neuralEnginePercent = 1;
  system.neuralEngineHolder.reset();
  card = Words::gpu(system, hardware);
  EXPECT_FALSE(card.isNeuralBusy);
  EXPECT_EQ(card.holderText, "ANE Idle — Ready for CoreML / Local LLM");
  EXPECT_FALSE(card.hasHolder);
}

TEST_F(OverviewCardWordsTest, HottestExactlyAtTheThresholdIsHot) {
  ThermalSample thermal;
  thermal.hottestSensorName = "CPU Proximity";
  thermal.hottestCelsius = look().hotThresholdCelsius();
  EXPECT_TRUE(Words::thermal(thermal, look()).isHot);
  EXPECT_EQ(Words::thermal(thermal, look()).hottestName, "Hottest: CPU Proximity");
  thermal.hottestCelsius -= 0.1;
  EXPECT_FALSE(Words::thermal(thermal, look()).isHot);
}

TEST_F(OverviewCardWordsTest, AMachineWithNoFansIsSilentPassiveAndHasTheUsualRange) {
  ThermalSample thermal;
  thermal.systemPowerWatts = 8.44;
  const ThermalCard card = Words::thermal(thermal, look());
  EXPECT_EQ(card.fanText, "Fan: 0 RPM (Silent)");
  EXPECT_EQ(card.subheadline, look().formatTemp(thermal.gpuCelsius) + " · 8.4 W · Passive");
  EXPECT_EQ(card.fanButton, "Fan Control");
  EXPECT_EQ(card.minRPM, 1200);
  EXPECT_EQ(card.maxRPM, 5800);
  EXPECT_EQ(card.fanID, 0);
}

TEST_F(OverviewCardWordsTest, TheFirstFanIsTheOneThatIsShown) {
  ThermalSample thermal;
  thermal.fans = {{3, "Left Fan", 2232.7, 1000, 5000, false, std::nullopt},
                  {4, "Right Fan", 9, 1, 2, true, 9.0}};
  ThermalCard card = Words::thermal(thermal, look());
  EXPECT_EQ(card.fanText, "Left Fan: 2232 RPM");
  EXPECT_TRUE(card.subheadline.endsWith(" · 2233 RPM"));
  EXPECT_EQ(card.fanButton, "Fan Control");
  EXPECT_EQ(card.minRPM, 1000);
  EXPECT_EQ(card.maxRPM, 5000);
  EXPECT_EQ(card.fanID, 3);
  thermal.fans[0].isManual = true;
  EXPECT_EQ(Words::thermal(thermal, look()).fanButton, "Manual RPM");
}

TEST_F(OverviewCardWordsTest, TemperaturesFollowTheUnit) {
  ThermalSample thermal;
  thermal.cpuCelsius = 50;
  thermal.gpuCelsius = 100;
  thermal.hottestCelsius = 60;
  snapshot.system.battery.emplace().temperatureCelsius = 30;
  EXPECT_EQ(Words::thermal(thermal, look()).headline, "50°C");
  scripted.store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_EQ(Words::thermal(thermal, look()).headline, "122°F");
  EXPECT_TRUE(Words::thermal(thermal, look()).subheadline.startsWith("212°F · "));
  EXPECT_EQ(Words::thermal(thermal, look()).hottestText, "140°F");
  EXPECT_EQ(Words::battery(snapshot, look()).temperatureText, "Batt Temp: 86°F");
}

TEST_F(OverviewCardWordsTest, TheNetworksCardSaysRatesSessionAndPorts) {
  snapshot.system.networkInBytesPerSec = 2048;
  snapshot.system.networkOutBytesPerSec = 0;
  snapshot.system.totalNetworkInBytes = gigabyte;
  snapshot.system.totalNetworkOutBytes = 512;
  snapshot.listeningPorts.resize(3);
  const NetworkCard card = Words::network(snapshot);
  EXPECT_EQ(card.headline, "↓ 2 KB/s  ↑ 0 B/s");
  EXPECT_EQ(card.sessionIn, "Session In: 1.0 GB");
  EXPECT_EQ(card.sessionOut, "Session Out: 512 B");
  EXPECT_EQ(card.portsText, "3 ports");
}

TEST_F(OverviewCardWordsTest, TheDisksCardListsEveryVolume) {
  snapshot.system.diskFreeBytes = 55 * gigabyte;
  snapshot.system.diskTotalBytes = 252 * gigabyte;
  snapshot.system.diskReadBytesPerSec = 1024;
  snapshot.volumes = {{"Root", "/", 1000, 333, true, false},
                      {"Stick", "/media/stick", 1000, 2000, false, true},
                      {"None", "/none", 0, 0, false, false}};
  const DiskCard card = Words::disk(snapshot);
  EXPECT_EQ(card.headline, "55 GB Free");
  EXPECT_EQ(card.subheadline, "of 252 GB");
  EXPECT_EQ(card.readText, "Read 1 KB/s");
  EXPECT_EQ(card.writeText, "Write 0 B/s");
  ASSERT_EQ(card.volumes.size(), 3);
  EXPECT_EQ(card.volumes[0], (CardRow{"internaldrive", "Root", "66% used", ""}));
  EXPECT_EQ(card.volumes[1], (CardRow{"externaldrive.fill", "Stick", "0% used", ""}));
  EXPECT_EQ(card.volumes[2].figure, "0% used");
}

TEST_F(OverviewCardWordsTest, ReadingAndWritingAddUpOverTheShorterOfTheTwo) {
  EXPECT_EQ(Words::diskHistory({1, 2, 3}, {10, 20}), QList<double>({11, 22}));
  EXPECT_TRUE(Words::diskHistory({}, {1}).isEmpty());
}

TEST_F(OverviewCardWordsTest, WithoutABatteryADesktopReadsAsFullAndPluggedIn) {
  snapshot.system.battery.reset();
  const BatteryCard card = Words::battery(snapshot, look());
  EXPECT_EQ(card.headline, "100% · Plugged In");
  EXPECT_EQ(card.subheadline, "Health 100%");
  EXPECT_EQ(card.cyclesText, "Cycles: 42");
  EXPECT_EQ(card.icon, "battery.100");
  EXPECT_EQ(card.awakeText, "");
  EXPECT_TRUE(card.blockers.isEmpty());
  EXPECT_TRUE(card.devices.isEmpty());
}

TEST_F(OverviewCardWordsTest, TheBatterysStateIsInItsIconAndItsWords) {
  BatterySample battery;
  battery.percentage = 79.6;
  battery.isCharging = true;
  battery.healthPercent = 91.9;
  battery.cycleCount = 312;
  battery.temperatureCelsius = 30;
  snapshot.system.battery = battery;
  BatteryCard card = Words::battery(snapshot, look());
  EXPECT_EQ(card.headline, "80% · Charging");
  EXPECT_EQ(card.icon, "battery.100.bolt");
  EXPECT_EQ(card.subheadline, "Health 91%");
  EXPECT_EQ(card.cyclesText, "Cycles: 312");
  EXPECT_EQ(card.temperatureText, "Batt Temp: 30°C");
  snapshot.system.battery->isCharging = false;
  snapshot.system.battery->isPluggedIn = false;
  card = Words::battery(snapshot, look());
  EXPECT_EQ(card.headline, "80% · On Battery");
  EXPECT_EQ(card.icon, "battery.100");
}

TEST_F(OverviewCardWordsTest, WhatKeepsTheMachineAwakeIsCountedAndNamed) {
  snapshot.sleepBlockers = {{7, "Player", "t", "r", true}, {7, "Player", "t", "r", true}};
  snapshot.bluetoothDevices = {{"Mouse", "pointing", 40, {}, {}, {}}};
  const BatteryCard card = Words::battery(snapshot, look());
  EXPECT_EQ(card.awakeText, "KEEPING MAC AWAKE (2)");
  ASSERT_EQ(card.blockers.size(), 2);
  EXPECT_EQ(card.blockers[1], (CardRow{"", "Player", "PID 7", ""}));
  ASSERT_EQ(card.devices.size(), 1);
  EXPECT_EQ(card.devices[0], (CardRow{"", "Mouse", "40%", ""}));
}

TEST_F(OverviewCardWordsTest, TopAppsAreTheFiveLargestApplicationsAndOnlyThose) {
  for (int number = 1; number <= 7; ++number) {
    addGroup("app" + std::to_string(number), 0, number == 3 ? 7000 : 1000);
  }
  addGroup("tool", 99, gigabyte).kind = AppGroupKind::other;
  snapshot.projects.resize(2);
  const TopAppsCard card = Words::topApps(snapshot);
  EXPECT_EQ(card.headline, "7 Apps Active");
  EXPECT_EQ(card.subheadline, "2 Projects");
  const std::vector<CardRow> apps = Words::largestApps(snapshot);
  ASSERT_EQ(apps.size(), 5U);
  EXPECT_EQ(apps[0], (CardRow{"", "app3", "7 KB", "daemon:app3"}));
  // Equal ones keep their order.
  EXPECT_EQ(apps[1].name, "app1");
  EXPECT_EQ(apps[4].name, "app5");
}

TEST_F(OverviewCardWordsTest, ATopAppHasTheIconOfItsBundle) {
  addGroup("bundled", 0, 10).bundlePath = "/Applications/Bundled.app";
  EXPECT_EQ(Words::largestApps(snapshot)[0].icon, "/Applications/Bundled.app");
}

TEST_F(OverviewCardWordsTest, FewerThanFiveAppsSimplyStopThere) {
  addGroup("only", 0, 10);
  EXPECT_EQ(Words::largestApps(snapshot).size(), 1U);
  snapshot.appGroups.clear();
  EXPECT_TRUE(Words::largestApps(snapshot).empty());
}

}  // namespace
}  // namespace korvantis
