#include "pictures/SampleMachine.h"

#include <cmath>
#include <utility>

#include "analysis/InsightTexts.h"
#include "analysis/PlanLimits.h"
#include "analysis/QuitCheck.h"
#include "pictures/SampleApplications.h"
#include "pictures/SampleHistory.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis::pictures {
namespace {

constexpr std::uint64_t megabyte = 1U << 20U;
constexpr std::uint64_t gigabyte = 1U << 30U;
const std::string code = "/home/demo/code/";

double wave(double ticks, double middle, double swing, double seed) {
  return middle + swing * (0.7 * std::sin(ticks * 0.23 + seed) + 0.3 * std::sin(ticks + 3 * seed));
}

std::uint64_t gigabytes(double amount) {
  return static_cast<std::uint64_t>(amount * static_cast<double>(gigabyte));
}

Instant ago(double seconds) {
  return Instant{Instant::now().secondsSince1970 - seconds};
}

HardwareInfo hardware() {
  return {.chipName = "Sample Processor 12",
          .logicalCores = 12,
          .performanceCores = 8,
          .efficiencyCores = 4,
          .gpuName = "Sample Graphics",
          .gpuCores = 16,
          .neuralEngineCores = 16,
          .totalMemoryBytes = 32 * gigabyte};
}

FanReading fan(std::int64_t id, const std::string& name, double rpm) {
  FanReading fan;
  fan.id = id;
  fan.name = name;
  fan.currentRPM = rpm;
  return fan;
}

ThermalSample thermal(double ticks) {
  ThermalSample heat;
  heat.cpuCelsius = wave(ticks, 58, 6, 1);
  heat.gpuCelsius = wave(ticks, 51, 4, 2);
  heat.hottestCelsius = heat.cpuCelsius + 4.6;
  heat.hottestSensorName = "CPU Performance Core 3";
  heat.systemPowerWatts = wave(ticks, 24.8, 5, 1);
  heat.sensors = {{"CPU Performance Core 3", "CPU", heat.hottestCelsius},
                  {"GPU Cluster", "GPU", heat.gpuCelsius},
                  {"Memory", "Board", 44.2},
                  {"Drive", "Storage", 39.6}};
  heat.fans = {fan(0, "Left Fan", wave(ticks, 2140, 90, 4)),
               fan(1, "Right Fan", wave(ticks, 2190, 90, 5))};
  return heat;
}

void setMemory(SystemSample& system, double ticks) {
  system.memoryTotalBytes = 32 * gigabyte;
  system.memoryUsedBytes = gigabytes(wave(ticks, 20.6, 0.8, 2));
  system.memoryAppBytes = gigabytes(13.1);
  system.memoryWiredBytes = gigabytes(4.2);
  system.memoryCompressedBytes = gigabytes(2.4);
  system.memoryCachedBytes = gigabytes(6.9);
  system.swapUsedBytes = 384 * megabyte;
  system.memoryPressurePercent = wave(ticks, 34, 3, 3);
}

SystemSample machine(double ticks) {
  SystemSample system;
  system.cpuPercent = wave(ticks, 31, 13, 0);
  system.cpuUserPercent = system.cpuPercent * 0.74;
  system.cpuSystemPercent = system.cpuPercent * 0.26;
  for (int core = 0; core < 12; ++core) {
    system.perCoreCPUPercent.push_back(std::max(1.5, wave(ticks, 46 - 3.2 * core, 24, core)));
  }
  system.loadAverage1m = 4.82;
  system.loadAverage5m = 3.97;
  system.loadAverage15m = 3.41;
  setMemory(system, ticks);
  system.gpuPercent = wave(ticks, 27, 9, 4);
  system.gpuMemoryBytes = gigabytes(1.8);
  system.neuralEnginePercent = std::max(0.0, wave(ticks, 9, 8, 5));
  system.neuralEngineWatts = 0.6;
  system.neuralEngineHolder = "Video Call";
  system.diskReadBytesPerSec = std::max(0.0, wave(ticks, 5.2e6, 4.8e6, 6));
  system.diskWriteBytesPerSec = std::max(0.0, wave(ticks, 8.9e6, 7.1e6, 7));
  system.diskTotalBytes = 994 * gigabyte;
  system.diskFreeBytes = 412 * gigabyte;
  system.networkInBytesPerSec = std::max(0.0, wave(ticks, 3.7e6, 2.2e6, 8));
  system.networkOutBytesPerSec = std::max(0.0, wave(ticks, 6.1e5, 3.0e5, 9));
  system.totalNetworkInBytes = gigabytes(18.4);
  system.totalNetworkOutBytes = gigabytes(3.1);
  system.battery = BatterySample{.percentage = 82,
                                 .isCharging = true,
                                 .watts = 38.5,
                                 .healthPercent = 94,
                                 .cycleCount = 118,
                                 .temperatureCelsius = 32.4,
                                 .timeRemainingMinutes = 41};
  system.thermal = thermal(ticks);
  return system;
}

ProcessSample server(const std::string& name, std::int32_t pid, double cpu, std::uint64_t mb,
                     const std::string& project, std::vector<std::uint16_t> ports) {
  ProcessSample process;
  process.pid = pid;
  process.responsiblePID = pid;
  process.name = name;
  process.arguments = name + " serve";
  process.workingDirectory = code + project;
  process.projectPath = code + project;
  process.listeningPorts = std::move(ports);
  process.cpuPercent = cpu;
  process.memoryBytes = mb * megabyte;
  process.startedAt = ago(7300);
  return process;
}

DevProject project(const std::string& name, std::vector<ProcessSample> processes,
                   std::vector<ContainerSample> containers) {
  DevProject project;
  project.name = name;
  project.path = code + name;
  for (const ProcessSample& process : processes) {
    project.cpuPercent += process.cpuPercent;
    project.memoryBytes += process.memoryBytes;
    for (const std::uint16_t port : process.listeningPorts) project.ports.push_back(port);
  }
  for (const ContainerSample& container : containers) project.memoryBytes += container.memoryBytes;
  project.memoryPercent = 100.0 * static_cast<double>(project.memoryBytes) / (32.0 * gigabyte);
  project.processes = std::move(processes);
  project.containers = std::move(containers);
  return project;
}

ContainerSample container(const std::string& service, const std::string& image, std::uint16_t port,
                          double cpu, std::uint64_t mb) {
  ContainerSample sample;
  sample.id = "4f1c" + service;
  sample.name = "storefront-" + service + "-1";
  sample.image = image;
  sample.status = "Up 3 hours";
  sample.composeProject = "storefront";
  sample.composeService = service;
  sample.workingDirectory = code + "storefront";
  sample.ports = {port};
  sample.cpuPercent = cpu;
  sample.memoryBytes = mb * megabyte;
  return sample;
}

void addProjects(EngineSnapshot& snapshot) {
  snapshot.containers = {container("database", "postgres:16", 5432, 1.4, 184),
                         container("cache", "redis:7", 6379, 0.3, 38),
                         container("mail", "mailcatcher:latest", 1025, 0.1, 66)};
  snapshot.projects = {
      project("storefront",
              {server("node", 4101, 9.7, 386, "storefront", {3000}),
               server("node", 4102, 3.1, 214, "storefront", {5173})},
              snapshot.containers),
      project("weather-api", {server("python3", 4210, 2.4, 148, "weather-api", {8000})}, {}),
      project("ledger", {server("cargo", 4301, 64.2, 512, "ledger", {8080})}, {})};
  snapshot.listeningPorts = {
      {3000, 4101, "node", "node", "storefront", code + "storefront", false, 386 * megabyte},
      {5173, 4102, "node", "node", "storefront", code + "storefront", false, 214 * megabyte},
      {5432, 3950, "postgres", "postgres", std::nullopt, std::nullopt, false, 142 * megabyte},
      {8000, 4210, "python3", "python3", "weather-api", code + "weather-api", true, 148 * megabyte},
      {8080, 4301, "cargo", "cargo", "ledger", code + "ledger", false, 512 * megabyte},
      {9229, 4402, "node", "node", "old-prototype", code + "old-prototype", true, 231 * megabyte}};
  snapshot.idleServers = {{4402,
                           "node",
                           "old-prototype",
                           code + "old-prototype",
                           {9229, 4000},
                           231 * megabyte,
                           0.0,
                           ago(86000),
                           9840},
                          {4210,
                           "python3",
                           "weather-api",
                           code + "weather-api",
                           {8000},
                           148 * megabyte,
                           0.1,
                           ago(7300),
                           2460}};
}

void addAgents(EngineSnapshot& snapshot) {
  snapshot.agentSessions = {{5101,
                             "Claude Code",
                             AgentState::working,
                             "storefront",
                             code + "storefront",
                             21.4,
                             412 * megabyte,
                             184000,
                             921000,
                             {"node", "rg", "git"},
                             ago(5200)},
                            {5102,
                             "Codex CLI",
                             AgentState::waitingForApproval,
                             "ledger",
                             code + "ledger",
                             0.6,
                             236 * megabyte,
                             96000,
                             388000,
                             {"cargo"},
                             ago(2100)},
                            {5103,
                             "Aider",
                             AgentState::idle,
                             "weather-api",
                             code + "weather-api",
                             0.0,
                             148 * megabyte,
                             0,
                             52000,
                             {},
                             ago(16300)}};
  snapshot.planLimits = planLimits({184000, 921000}, {96000, 388000});
}

void addInsights(EngineSnapshot& snapshot) {
  const auto& groups = snapshot.appGroups;
  const auto add = [&snapshot](Insight insight, double secondsAgo) {
    insight.id.bytes[0] = static_cast<std::uint8_t>(snapshot.newInsights.size() + 1);
    insight.createdAt = ago(secondsAgo);
    snapshot.newInsights.push_back(std::move(insight));
  };
  add(InsightTexts::sustainedCPU(groups.at(1)), 95);
  add(InsightTexts::idleServers(snapshot.idleServers), 640);
  add(InsightTexts::memoryGrowth(groups.at(2), groups.at(2).memoryBytes / 2), 1500);
  add(InsightTexts::diskBurst(snapshot.system, &groups.at(13)), 4300);
  add(InsightTexts::topMemoryHolder(groups.at(0)), 9100);
}

BluetoothPeripheral peripheral(const std::string& name, std::int64_t percent) {
  BluetoothPeripheral peripheral;
  peripheral.name = name;
  peripheral.batteryPercent = percent;
  return peripheral;
}

void addSurroundings(EngineSnapshot& snapshot) {
  snapshot.sleepBlockers = {
      {1560, "Video Call", "PreventUserIdleDisplaySleep", "A call is going on", true},
      {1720, "backup-agent", "PreventSystemSleep", "A backup is being written", false}};
  snapshot.bluetoothDevices = {peripheral("Headphones", 76), peripheral("Mouse", 41)};
  snapshot.volumes = {
      {"Main", "/", 994 * gigabyte, 412 * gigabyte, true, false},
      {"Backup", "/media/demo/Backup", 1862 * gigabyte, 640 * gigabyte, false, true}};
}

}  // namespace

SampleMachine::SampleMachine(std::string bundleFolder) : folder(std::move(bundleFolder)) {
  writeSampleBundles(folder);
}

EngineSnapshot SampleMachine::sample() {
  ticks += 1;
  EngineSnapshot snapshot;
  snapshot.system = machine(ticks);
  snapshot.appGroups = sampleApplications(folder, ticks);
  addProjects(snapshot);
  addAgents(snapshot);
  addInsights(snapshot);
  addSurroundings(snapshot);
  last = snapshot;
  return snapshot;
}

MonitorStoreCalls SampleMachine::storeCalls() {
  MonitorStoreCalls calls;
  calls.engine.readHardwareInfo = hardware;
  calls.engine.sampleTick = [this](const auto&, const auto&, double) { return sample(); };
  calls.engine.loadReadings = sampleReadings;
  calls.engine.loadAppSummaries = [this](Instant) { return sampleLedger(folder); };
  calls.engine.exportCSVToDownloads = [](Instant) { return std::nullopt; };
  calls.engine.checkQuitSafety = [this](const AppGroup& group) {
    return QuitCheck::evaluate(group, last.sleepBlockers);
  };
  calls.engine.quitAppGroup = [](const AppGroup&, bool) { return false; };
  calls.engine.stopProcess = [](std::int32_t, bool) { return false; };
  calls.engine.stopIdleServers = [](const auto&) { return 0; };
  calls.engine.setFanTarget = [](std::int64_t, std::optional<double>) { return false; };
  calls.engine.startBridgeListener = [](const BridgeProvider&) {};
  calls.mainRunLoop.scheduleRepeatingTimer = [](double, const std::function<void()>&) {
    return RepeatingTimer{[] {}};
  };
  calls.mainRunLoop.async = [](const std::function<void()>& task) { task(); };
  calls.mainRunLoop.asyncAfter = [](double, const std::function<void()>&) {};
  calls.clock = systemClock();
  calls.userDefaults.stringForKey = [](const std::string&) { return std::nullopt; };
  calls.userDefaults.setString = [](const std::string&, const std::string&) {};
  calls.appearance.detectSystemDarkMode = [] { return true; };
  calls.applicationAppearance.setThemeIsDark = &OstrelTheme::setIsDark;
  return calls;
}

}  // namespace korvantis::pictures
