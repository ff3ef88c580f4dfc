#include <cstdlib>
#include <cxxabi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <typeinfo>
#include <vector>

#include "AllRecords.h"

/// The keys of each record's JSON form with the types of their values, in their order.
namespace korvantis {
namespace {

using testing::ElementsAre;

template <typename Value>
struct TypeWord {
  static std::string word() {
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(Value).name(), nullptr, nullptr, nullptr), std::free);
    return std::string(name.get()).substr(std::string("korvantis::").size());
  }
};

template <typename Value>
struct TypeWord<std::optional<Value>> {
  static std::string word() { return "optional " + TypeWord<Value>::word(); }
};

template <typename Value>
struct TypeWord<std::vector<Value>> {
  static std::string word() { return "list of " + TypeWord<Value>::word(); }
};

template <>
struct TypeWord<std::string> {
  static std::string word() { return "text"; }
};

template <>
struct TypeWord<bool> {
  static std::string word() { return "bool"; }
};

template <>
struct TypeWord<double> {
  static std::string word() { return "double"; }
};

template <>
struct TypeWord<std::int32_t> {
  static std::string word() { return "int32"; }
};

template <>
struct TypeWord<std::int64_t> {
  static std::string word() { return "int"; }
};

template <>
struct TypeWord<std::uint16_t> {
  static std::string word() { return "uint16"; }
};

template <>
struct TypeWord<std::uint32_t> {
  static std::string word() { return "uint32"; }
};

template <>
struct TypeWord<std::uint64_t> {
  static std::string word() { return "uint64"; }
};

template <typename Record, typename Value>
std::string keyAndType(const Field<Record, Value>& field) {
  return std::string(field.key) + ": " + TypeWord<Value>::word();
}

template <typename Record>
std::vector<std::string> keysOf() {
  const auto all = [](const auto&... fields) { return std::vector{keyAndType(fields)...}; };
  return std::apply(all, Record::fields());
}

TEST(RecordKeys, HardwareInfo) {
  EXPECT_THAT(keysOf<HardwareInfo>(),
              ElementsAre("chipName: text", "logicalCores: int", "performanceCores: int",
                          "efficiencyCores: int", "gpuName: text", "gpuCores: int",
                          "neuralEngineCores: int", "totalMemoryBytes: uint64"));
}

TEST(RecordKeys, SystemSample) {
  EXPECT_EQ(keysOf<SystemSample>(), (std::vector<std::string>{"timestamp: Instant",
                                                              "cpuPercent: double",
                                                              "cpuUserPercent: double",
                                                              "cpuSystemPercent: double",
                                                              "perCoreCPUPercent: list of double",
                                                              "loadAverage1m: double",
                                                              "loadAverage5m: double",
                                                              "loadAverage15m: double",
                                                              "memoryTotalBytes: uint64",
                                                              "memoryUsedBytes: uint64",
                                                              "memoryAppBytes: uint64",
                                                              "memoryWiredBytes: uint64",
                                                              "memoryCompressedBytes: uint64",
                                                              "memoryCachedBytes: uint64",
                                                              "swapUsedBytes: uint64",
                                                              "memoryPressurePercent: double",
                                                              "memoryPressure: MemoryPressureLevel",
                                                              "gpuPercent: double",
                                                              "gpuMemoryBytes: uint64",
                                                              "neuralEnginePercent: double",
                                                              "neuralEngineWatts: double",
                                                              "neuralEngineHolder: optional text",
                                                              "diskReadBytesPerSec: double",
                                                              "diskWriteBytesPerSec: double",
                                                              "diskTotalBytes: uint64",
                                                              "diskFreeBytes: uint64",
                                                              "networkInBytesPerSec: double",
                                                              "networkOutBytesPerSec: double",
                                                              "totalNetworkInBytes: uint64",
                                                              "totalNetworkOutBytes: uint64",
                                                              "battery: optional BatterySample",
                                                              "thermal: ThermalSample"}));
}

TEST(RecordKeys, BatterySample) {
  EXPECT_THAT(keysOf<BatterySample>(),
              ElementsAre("percentage: double", "isCharging: bool", "isPluggedIn: bool",
                          "watts: double", "healthPercent: double", "cycleCount: int",
                          "temperatureCelsius: double", "timeRemainingMinutes: optional int"));
}

TEST(RecordKeys, SensorItem) {
  EXPECT_THAT(keysOf<SensorItem>(), ElementsAre("name: text", "group: text", "celsius: double"));
}

TEST(RecordKeys, FanReading) {
  EXPECT_THAT(keysOf<FanReading>(),
              ElementsAre("id: int", "name: text", "currentRPM: double", "minRPM: double",
                          "maxRPM: double", "isManual: bool", "targetRPM: optional double"));
}

TEST(RecordKeys, ThermalSample) {
  EXPECT_THAT(
      keysOf<ThermalSample>(),
      ElementsAre("cpuCelsius: double", "gpuCelsius: double", "hottestCelsius: double",
                  "hottestSensorName: text", "systemPowerWatts: double", "thermalStateLevel: int",
                  "sensors: list of SensorItem", "fans: list of FanReading"));
}

TEST(RecordKeys, HelperShare) {
  EXPECT_THAT(keysOf<HelperShare>(),
              ElementsAre("role: HelperRole", "processCount: int", "cpuPercent: double",
                          "memoryBytes: uint64", "gpuPercent: double"));
}

TEST(RecordKeys, ProcessSample) {
  EXPECT_EQ(keysOf<ProcessSample>(), (std::vector<std::string>{"pid: int32",
                                                               "ppid: int32",
                                                               "responsiblePID: int32",
                                                               "uid: uint32",
                                                               "name: text",
                                                               "executablePath: text",
                                                               "arguments: text",
                                                               "workingDirectory: optional text",
                                                               "projectPath: optional text",
                                                               "listeningPorts: list of uint16",
                                                               "cpuPercent: double",
                                                               "gpuPercent: double",
                                                               "memoryBytes: uint64",
                                                               "diskReadBytesPerSec: double",
                                                               "diskWriteBytesPerSec: double",
                                                               "networkInBytesPerSec: double",
                                                               "networkOutBytesPerSec: double",
                                                               "energyWatts: double",
                                                               "idleWakeups: uint64",
                                                               "startedAt: Instant",
                                                               "helperRole: HelperRole"}));
}

TEST(RecordKeys, AppGroup) {
  EXPECT_EQ(keysOf<AppGroup>(),
            (std::vector<std::string>{
                "id: text", "name: text", "kind: AppGroupKind", "bundlePath: optional text",
                "bundleIdentifier: optional text", "cpuPercent: double", "gpuPercent: double",
                "memoryBytes: uint64", "memoryPercent: double", "networkInBytesPerSec: double",
                "networkOutBytesPerSec: double", "diskReadBytesPerSec: double",
                "diskWriteBytesPerSec: double", "energyWatts: double",
                "processes: list of ProcessSample", "helperShares: list of HelperShare"}));
}

TEST(RecordKeys, ContainerSample) {
  EXPECT_EQ(
      keysOf<ContainerSample>(),
      (std::vector<std::string>{
          "id: text", "name: text", "image: text", "engine: text", "status: text",
          "composeProject: optional text", "composeService: optional text",
          "workingDirectory: optional text", "ports: list of uint16", "cpuPercent: double",
          "memoryBytes: uint64", "networkRxBytesPerSec: double", "networkTxBytesPerSec: double",
          "blockReadBytesPerSec: double", "blockWriteBytesPerSec: double"}));
}

TEST(RecordKeys, DevProject) {
  EXPECT_EQ(keysOf<DevProject>(),
            (std::vector<std::string>{
                "name: text", "path: text", "cpuPercent: double", "gpuPercent: double",
                "memoryBytes: uint64", "memoryPercent: double", "networkInBytesPerSec: double",
                "networkOutBytesPerSec: double", "diskReadBytesPerSec: double",
                "diskWriteBytesPerSec: double", "energyWatts: double", "ports: list of uint16",
                "processes: list of ProcessSample", "containers: list of ContainerSample"}));
}

TEST(RecordKeys, IdleServer) {
  EXPECT_THAT(keysOf<IdleServer>(),
              ElementsAre("pid: int32", "name: text", "projectName: text", "projectPath: text",
                          "ports: list of uint16", "memoryBytes: uint64", "cpuPercent: double",
                          "startedAt: Instant", "idleSeconds: double"));
}

TEST(RecordKeys, ListeningPortItem) {
  EXPECT_THAT(keysOf<ListeningPortItem>(),
              ElementsAre("port: uint16", "pid: int32", "processName: text", "appName: text",
                          "projectName: optional text", "projectPath: optional text",
                          "isIdle: bool", "memoryBytes: uint64"));
}

TEST(RecordKeys, Insight) {
  EXPECT_THAT(keysOf<Insight>(),
              ElementsAre("id: Uuid", "kind: InsightKind", "targetAppID: optional text",
                          "targetAppName: optional text", "title: text", "detail: text",
                          "metricText: text", "createdAt: Instant", "isPinned: bool"));
}

TEST(RecordKeys, AppLimit) {
  EXPECT_THAT(keysOf<AppLimit>(), ElementsAre("id: Uuid", "appID: text", "appName: text",
                                              "bundlePath: optional text", "figure: AppLimitFigure",
                                              "limit: double", "minutes: int", "isEnabled: bool"));
}

TEST(RecordKeys, MutedApp) {
  EXPECT_THAT(keysOf<MutedApp>(),
              ElementsAre("appID: text", "appName: text", "bundlePath: optional text",
                          "until: optional Instant"));
}

TEST(RecordKeys, QuitSafetyResult) {
  EXPECT_THAT(keysOf<QuitSafetyResult>(),
              ElementsAre("verdict: QuitSafetyVerdictKind", "reason: text",
                          "freedMemoryBytes: uint64", "freedPorts: list of uint16"));
}

TEST(RecordKeys, Reading) {
  EXPECT_EQ(keysOf<Reading>(), (std::vector<std::string>{"start: int",
                                                         "seconds: double",
                                                         "cpuPercentAvg: double",
                                                         "cpuPercentPeak: double",
                                                         "memoryUsedBytesAvg: double",
                                                         "memoryUsedBytesPeak: double",
                                                         "memoryPressurePercentAvg: double",
                                                         "memoryPressurePercentPeak: double",
                                                         "memoryPressureLevelPeak: int",
                                                         "swapUsedBytesPeak: uint64",
                                                         "gpuPercentAvg: double",
                                                         "gpuPercentPeak: double",
                                                         "neuralEnginePercentAvg: double",
                                                         "neuralEnginePercentPeak: double",
                                                         "cpuCelsiusAvg: double",
                                                         "cpuCelsiusPeak: double",
                                                         "hottestCelsiusAvg: double",
                                                         "hottestCelsiusPeak: double",
                                                         "fanRpmAvg: double",
                                                         "fanRpmPeak: double",
                                                         "powerWattsAvg: double",
                                                         "powerWattsPeak: double",
                                                         "thermalStatePeak: int",
                                                         "batteryPercentAvg: double",
                                                         "pluggedInSeconds: double"}));
}

TEST(RecordKeys, HistoricalAppSummary) {
  EXPECT_EQ(keysOf<HistoricalAppSummary>(),
            (std::vector<std::string>{
                "appID: text", "name: text", "kind: text", "bundlePath: optional text",
                "activeSeconds: double", "cpuLoadSeconds: double", "memoryByteSeconds: double",
                "peakMemoryBytes: uint64", "networkBytesIn: uint64", "networkBytesOut: uint64",
                "diskBytesRead: uint64", "diskBytesWritten: uint64", "energyJoules: double"}));
}

TEST(RecordKeys, AgentSession) {
  EXPECT_EQ(
      keysOf<AgentSession>(),
      (std::vector<std::string>{"pid: int32", "toolName: text", "state: AgentState",
                                "projectName: text", "projectPath: text", "cpuPercent: double",
                                "memoryBytes: uint64", "tokensToday: int", "tokensWeek: int",
                                "childProcesses: list of text", "startedAt: Instant"}));
}

TEST(RecordKeys, PlanLimitStatus) {
  EXPECT_THAT(
      keysOf<PlanLimitStatus>(),
      ElementsAre("tool: text", "planName: text", "fiveHourUsedPercent: double",
                  "fiveHourResetText: text", "weeklyUsedPercent: double", "weeklyResetText: text",
                  "paceText: text", "tokensToday: int", "tokensWeek: int", "colorHex: text"));
}

TEST(RecordKeys, SleepBlocker) {
  EXPECT_THAT(keysOf<SleepBlocker>(),
              ElementsAre("pid: int32", "processName: text", "assertionType: text", "reason: text",
                          "preventsDisplaySleep: bool"));
}

TEST(RecordKeys, BluetoothPeripheral) {
  EXPECT_THAT(keysOf<BluetoothPeripheral>(),
              ElementsAre("name: text", "category: text", "batteryPercent: int",
                          "leftPercent: optional int", "rightPercent: optional int",
                          "casePercent: optional int"));
}

TEST(RecordKeys, MountedVolume) {
  EXPECT_THAT(keysOf<MountedVolume>(),
              ElementsAre("name: text", "path: text", "totalBytes: uint64", "freeBytes: uint64",
                          "isInternal: bool", "isRemovable: bool"));
}

TEST(RecordKeys, AudioDeviceItem) {
  EXPECT_THAT(keysOf<AudioDeviceItem>(),
              ElementsAre("id: uint32", "name: text", "isInput: bool", "isDefault: bool"));
}

TEST(RecordKeys, AppAudioStream) {
  EXPECT_THAT(keysOf<AppAudioStream>(),
              ElementsAre("appID: text", "appName: text", "pid: int32", "bundlePath: optional text",
                          "volume: double", "isMuted: bool", "isActive: bool"));
}

TEST(RecordKeys, EngineSnapshot) {
  EXPECT_EQ(
      keysOf<EngineSnapshot>(),
      (std::vector<std::string>{
          "system: SystemSample", "appGroups: list of AppGroup", "projects: list of DevProject",
          "containers: list of ContainerSample", "idleServers: list of IdleServer",
          "listeningPorts: list of ListeningPortItem", "newInsights: list of Insight",
          "activeStrains: list of StrainKind", "agentSessions: list of AgentSession",
          "planLimits: list of PlanLimitStatus", "sleepBlockers: list of SleepBlocker",
          "bluetoothDevices: list of BluetoothPeripheral", "volumes: list of MountedVolume"}));
}

}  // namespace
}  // namespace korvantis
