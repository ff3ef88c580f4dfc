#include <gtest/gtest.h>

#include "AllRecords.h"
#include "platform/Clock.h"
#include "platform/ProcessInfoCalls.h"

namespace korvantis {
namespace {

TEST(RecordDefaults, HardwareInfoStandsInForAnUnreadMachine) {
  const HardwareInfo info;
  EXPECT_EQ(info.chipName, "Apple Silicon");
  EXPECT_EQ(info.logicalCores, 10);
  EXPECT_EQ(info.performanceCores, 6);
  EXPECT_EQ(info.efficiencyCores, 4);
  EXPECT_EQ(info.gpuName, "Apple Integrated GPU");
  EXPECT_EQ(info.gpuCores, 10);
  EXPECT_EQ(info.neuralEngineCores, 16);
  EXPECT_EQ(info.totalMemoryBytes, systemProcessInfoCalls().physicalMemory());
  EXPECT_GT(info.totalMemoryBytes, 0U);
}

TEST(RecordDefaults, EmptySystemSampleIsTakenNowOnThisMachine) {
  const double before = systemClock().now();
  const SystemSample sample;
  const double after = systemClock().now();
  EXPECT_GE(sample.timestamp.secondsSince1970, before);
  EXPECT_LE(sample.timestamp.secondsSince1970, after);
  EXPECT_EQ(sample.memoryTotalBytes, systemProcessInfoCalls().physicalMemory());
  EXPECT_EQ(sample.memoryPressurePercent, 12.0);
  EXPECT_EQ(sample.memoryPressure, MemoryPressureLevel::normal);
  EXPECT_TRUE(sample.perCoreCPUPercent.empty());
  EXPECT_FALSE(sample.neuralEngineHolder);
  EXPECT_FALSE(sample.battery);
  EXPECT_EQ(sample.thermal, ThermalSample());
}

TEST(RecordDefaults, EmptySystemSampleHasZeroInEveryOtherFigure) {
  const SystemSample sample;
  int zeros = 0;
  const auto count = [&](const auto& field) {
    if constexpr (requires { sample.*field.member == 0; }) zeros += sample.*field.member == 0;
  };
  std::apply([&](const auto&... fields) { (count(fields), ...); }, SystemSample::fields());
  // 32 fields, less the eight that the test above looks at.
  EXPECT_EQ(zeros, 24);
}

TEST(RecordDefaults, BatterySampleStandsInForAMachineWithoutABattery) {
  const BatterySample battery;
  EXPECT_EQ(battery.percentage, 100.0);
  EXPECT_FALSE(battery.isCharging);
  EXPECT_TRUE(battery.isPluggedIn);
  EXPECT_EQ(battery.watts, 0.0);
  EXPECT_EQ(battery.healthPercent, 100.0);
  EXPECT_EQ(battery.cycleCount, 42);
  EXPECT_EQ(battery.temperatureCelsius, 31.5);
  EXPECT_FALSE(battery.timeRemainingMinutes);
}

TEST(RecordDefaults, FanReadingRunsFrom1200To5800) {
  const FanReading fan;
  EXPECT_EQ(fan.minRPM, 1200.0);
  EXPECT_EQ(fan.maxRPM, 5800.0);
  EXPECT_FALSE(fan.isManual);
  EXPECT_FALSE(fan.targetRPM);
}

TEST(RecordDefaults, ThermalSampleIsLukewarm) {
  const ThermalSample thermal;
  EXPECT_EQ(thermal.cpuCelsius, 44.0);
  EXPECT_EQ(thermal.gpuCelsius, 41.0);
  EXPECT_EQ(thermal.hottestCelsius, 46.5);
  EXPECT_EQ(thermal.hottestSensorName, "CPU Performance Core");
  EXPECT_EQ(thermal.systemPowerWatts, 8.4);
  EXPECT_EQ(thermal.thermalStateLevel, 0);
  EXPECT_TRUE(thermal.sensors.empty());
  EXPECT_TRUE(thermal.fans.empty());
}

TEST(RecordDefaults, ProcessSampleIsTheFirstUsersMainProcess) {
  const ProcessSample process;
  EXPECT_EQ(process.uid, 501U);
  EXPECT_EQ(process.helperRole, HelperRole::main);
  EXPECT_FALSE(process.workingDirectory);
  EXPECT_FALSE(process.projectPath);
  EXPECT_TRUE(process.listeningPorts.empty());
}

TEST(RecordDefaults, ContainerSampleIsUpInDocker) {
  const ContainerSample container;
  EXPECT_EQ(container.engine, "Docker");
  EXPECT_EQ(container.status, "Up");
  EXPECT_FALSE(container.composeProject);
  EXPECT_FALSE(container.composeService);
  EXPECT_FALSE(container.workingDirectory);
}

TEST(RecordDefaults, InsightIsNotPinned) {
  EXPECT_FALSE(Insight().isPinned);
}

TEST(RecordDefaults, AppLimitIs150ForFiveMinutesAndOn) {
  const AppLimit limit;
  EXPECT_EQ(limit.limit, 150.0);
  EXPECT_EQ(limit.minutes, 5);
  EXPECT_TRUE(limit.isEnabled);
  EXPECT_FALSE(limit.bundlePath);
}

TEST(RecordDefaults, MutedAppIsMutedUntilUnmuted) {
  EXPECT_FALSE(MutedApp().until);
}

TEST(RecordDefaults, ReadingCoversFiveMinutes) {
  EXPECT_EQ(Reading().seconds, 300.0);
}

TEST(RecordDefaults, HistoricalAppSummaryIsOfAnApp) {
  EXPECT_EQ(HistoricalAppSummary().kind, "app");
  EXPECT_FALSE(HistoricalAppSummary().bundlePath);
}

TEST(RecordDefaults, PlanLimitStatusIsOnPace) {
  EXPECT_EQ(PlanLimitStatus().paceText, "On pace");
  EXPECT_EQ(PlanLimitStatus().colorHex, "#d97757");
}

TEST(RecordDefaults, BluetoothPeripheralIsAnAccessory) {
  const BluetoothPeripheral device;
  EXPECT_EQ(device.category, "accessory");
  EXPECT_FALSE(device.leftPercent);
  EXPECT_FALSE(device.rightPercent);
  EXPECT_FALSE(device.casePercent);
}

TEST(RecordDefaults, AppAudioStreamIsAtFullVolume) {
  const AppAudioStream stream;
  EXPECT_EQ(stream.volume, 1.0);
  EXPECT_FALSE(stream.isMuted);
  EXPECT_FALSE(stream.isActive);
  EXPECT_FALSE(stream.bundlePath);
}

TEST(RecordDefaults, EveryListOfAnEngineSnapshotIsEmpty) {
  const EngineSnapshot snapshot;
  int lists = 0;
  const auto check = [&](const auto& field) {
    if constexpr (requires { (snapshot.*field.member).empty(); }) {
      EXPECT_TRUE((snapshot.*field.member).empty()) << field.key;
      ++lists;
    }
  };
  std::apply([&](const auto&... fields) { (check(fields), ...); }, EngineSnapshot::fields());
  EXPECT_EQ(lists, 12);
  EXPECT_EQ(snapshot.system.memoryPressurePercent, 12.0);
  EXPECT_FALSE(snapshot.system.battery);
}

}  // namespace
}  // namespace korvantis
