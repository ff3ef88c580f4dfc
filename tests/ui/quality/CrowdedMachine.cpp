#include "ui/quality/CrowdedMachine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace korvantis::test {

namespace {

constexpr std::uint64_t mebibyte = 1ULL << 20U;
constexpr double tickSeconds = 2.0;
/// Into how many changing shapes the machine falls.
constexpr int stride = 7;

constexpr std::array longNames{
    "Integrated Development Environment for Embedded Systems Professional",
    "Многоязычный редактор исходных текстов и документации для всех разработчиков",
    "統合開発環境・日本語版・とても長い名前のアプリケーション・二〇二六年版・評価用・限定配布",
    "برنامج مراقبة أداء النظام والتطبيقات والعمليات لأجهزة المطورين المحترفين",
    "Rocket 🚀🔥 Launch Control 👩‍💻 for Teams 🧑‍🚀 with Emoji 🎉 in its Name "
    "🛰️ "
    "Preview",
    "Überprüfungsprogramm-für-Größenänderungen-ohne-jede-Trennmöglichkeit-Straße",
    "com.example.enterprise.background.synchronisation.helper.with.identifier"};
constexpr std::array plainNames{"Browser", "Editor",   "Terminal", "Music",
                                "Mail",    "Calendar", "server"};

/// A whole number that looks random and depends on nothing else.
std::uint32_t scatter(int number, int turn) {
  auto value =
      static_cast<std::uint32_t>(number) * 2654435761U + static_cast<std::uint32_t>(turn) * 40503U;
  value ^= value >> 15U;
  value *= 2246822519U;
  return value ^ (value >> 13U);
}

double upTo(double most, int number, int turn) {
  return most * (scatter(number, turn) % 1000U) / 1000.0;
}

Uuid uuidOf(int number) {
  Uuid id;
  std::memcpy(id.bytes.data(), &number, sizeof number);
  return id;
}

constexpr std::array kinds{
    InsightKind::sustainedCPU, InsightKind::memoryGrowth,     InsightKind::memoryPressure,
    InsightKind::diskBurst,    InsightKind::networkBurst,     InsightKind::idleServers,
    InsightKind::runningHot,   InsightKind::neuralEngineBusy, InsightKind::appLimit};
constexpr std::array roles{HelperRole::renderer, HelperRole::extensionHost, HelperRole::gpu,
                           HelperRole::network, HelperRole::other};

std::vector<HelperShare> sharesOf(const std::vector<ProcessSample>& processes) {
  std::vector<HelperShare> shares;
  for (const ProcessSample& process : processes) {
    auto share = std::find_if(shares.begin(), shares.end(), [&](const HelperShare& candidate) {
      return candidate.role == process.helperRole;
    });
    if (share == shares.end()) {
      shares.push_back({.role = process.helperRole});
      share = shares.end() - 1;
    }
    ++share->processCount;
    share->cpuPercent += process.cpuPercent;
    share->memoryBytes += process.memoryBytes;
  }
  return shares;
}

}  // namespace

bool CrowdedMachine::hasForeignName(const QString& text) {
  const auto isIn = [&](const char* name) {
    // The beginning is enough: a screen may show a part.
    return text.contains(QString::fromUtf8(name).left(10), Qt::CaseInsensitive);
  };
  return std::any_of(longNames.begin(), longNames.end(), isIn);
}

std::string CrowdedMachine::name(int number) const {
  const auto index = static_cast<std::size_t>(number);
  if (hasLongNames) return longNames.at(index % longNames.size());
  return plainNames.at(index % plainNames.size()) + std::string(" ") + std::to_string(number);
}

ProcessSample CrowdedMachine::process(int number, int turn) const {
  ProcessSample process;
  process.pid = 1000 + number;
  process.ppid = 1;
  process.name = name(number);
  process.executablePath = "/opt/" + process.name + "/bin/" + process.name;
  process.arguments = process.executablePath + " --type=renderer --folder=/home/" + process.name;
  process.cpuPercent = number % 5 == 0 ? upTo(180, number, turn) : upTo(2, number, turn / stride);
  process.memoryBytes = (20 + scatter(number, turn / 3) % 900U) * mebibyte;
  process.diskReadBytesPerSec = number % 9 == 0 ? upTo(9e6, number, turn) : 0;
  process.diskWriteBytesPerSec = number % 11 == 0 ? upTo(4e6, number, turn) : 0;
  process.networkInBytesPerSec = number % 6 == 0 ? upTo(3e6, number, turn) : 0;
  process.energyWatts = process.cpuPercent / 12;
  process.startedAt = Instant{startTime - number};
  process.helperRole = roles.at(static_cast<std::size_t>(number) % roles.size());
  if (number % 8 == 0) {
    process.listeningPorts = {static_cast<std::uint16_t>(3000 + number % 20000),
                              static_cast<std::uint16_t>(23000 + number % 20000)};
  }
  return process;
}

AppGroup CrowdedMachine::application(int number, int turn) const {
  AppGroup group;
  group.name = name(number);
  group.kind = number % 6 == 4   ? AppGroupKind::system
               : number % 6 == 5 ? AppGroupKind::other
                                 : AppGroupKind::app;
  group.id = "/Applications/" + std::to_string(number) + ".app";
  if (group.kind == AppGroupKind::app) group.bundlePath = group.id;
  // The first application has a big family, the others share what is left.
  const int family = std::min(processes / 3, 20);
  const int others = std::max(1, applications - 1);
  const int first = number == 0 ? 0 : family + (number - 1) * (processes - family) / others;
  const int end = number == 0 ? family : family + number * (processes - family) / others;
  for (int index = first; index < end; ++index) group.processes.push_back(process(index, turn));
  if (!group.processes.empty()) group.processes.front().helperRole = HelperRole::main;
  for (const ProcessSample& process : group.processes) {
    group.cpuPercent += process.cpuPercent;
    group.memoryBytes += process.memoryBytes;
    group.networkInBytesPerSec += process.networkInBytesPerSec;
    group.diskReadBytesPerSec += process.diskReadBytesPerSec;
    group.diskWriteBytesPerSec += process.diskWriteBytesPerSec;
    group.energyWatts += process.energyWatts;
  }
  group.helperShares = sharesOf(group.processes);
  return group;
}

DevProject CrowdedMachine::project(int number, const AppGroup& owner) const {
  DevProject project;
  project.name = name(number);
  project.path = "/home/ada/src/" + name(number + 1) + "/" + project.name + std::to_string(number);
  project.processes = owner.processes;
  project.memoryBytes = owner.memoryBytes;
  project.cpuPercent = owner.cpuPercent;
  project.ports = {3000, 5173, 65535};
  return project;
}

ContainerSample CrowdedMachine::container(int number) const {
  ContainerSample container;
  container.id = "container" + std::to_string(number);
  container.name = name(number);
  container.image = "registry.example/" + name(number + 1) + ":latest";
  container.status = "Up 27 hours (healthy)";
  container.ports = {5432, 65535};
  container.cpuPercent = 1.5;
  container.memoryBytes = 128 * mebibyte;
  return container;
}

Insight CrowdedMachine::insight(int number, int turn) const {
  Insight insight;
  insight.id = uuidOf(number + 100 * (turn / 50));
  insight.kind = kinds.at(static_cast<std::size_t>(number) % kinds.size());
  insight.targetAppName = name(number);
  insight.targetAppID = "/Applications/" + std::to_string(number) + ".app";
  insight.title = name(number) + " is using a lot of CPU";
  insight.detail = name(number) +
                   " has held the processor above 150 percent for five minutes, on "
                   "average 182 percent. Sampled over the last 300 seconds.";
  insight.metricText = "182% CPU";
  insight.createdAt = Instant{startTime - number};
  return insight;
}

SystemSample CrowdedMachine::system(int turn) const {
  SystemSample system;
  system.timestamp = Instant{startTime + turn * tickSeconds};
  system.cpuPercent = 100 - upTo(60, 1, turn);
  system.cpuUserPercent = system.cpuPercent * 0.7;
  system.cpuSystemPercent = system.cpuPercent * 0.3;
  for (int core = 0; core < 24; ++core) system.perCoreCPUPercent.push_back(upTo(100, core, turn));
  system.loadAverage1m = 128.25;
  system.memoryTotalBytes = 196608 * mebibyte;
  system.memoryUsedBytes = 180000 * mebibyte + scatter(2, turn) % 4096U * mebibyte;
  system.memoryAppBytes = 120000 * mebibyte;
  system.memoryWiredBytes = 30000 * mebibyte;
  system.memoryCompressedBytes = 20000 * mebibyte;
  system.memoryCachedBytes = 15000 * mebibyte;
  system.swapUsedBytes = 12345 * mebibyte;
  system.memoryPressurePercent = 88.8;
  system.memoryPressure = MemoryPressureLevel::critical;
  system.gpuPercent = 100;
  system.gpuMemoryBytes = 12345 * mebibyte;
  system.neuralEnginePercent = 88.8;
  system.neuralEngineWatts = 12.5;
  system.neuralEngineHolder = name(2);
  system.diskReadBytesPerSec = 2.5e9;
  system.diskWriteBytesPerSec = upTo(1.2e9, 3, turn);
  system.diskTotalBytes = 8000000 * mebibyte;
  system.diskFreeBytes = 1234567 * mebibyte;
  system.networkInBytesPerSec = upTo(1.1e9, 4, turn);
  system.networkOutBytesPerSec = 1.1e9;
  system.totalNetworkInBytes = 9000000 * mebibyte;
  system.totalNetworkOutBytes = 8000000 * mebibyte;
  system.battery = BatterySample{.percentage = 100,
                                 .isCharging = true,
                                 .isPluggedIn = true,
                                 .watts = 140.5,
                                 .cycleCount = 1234,
                                 .timeRemainingMinutes = 1234};
  system.thermal.hottestCelsius = 104.5;
  system.thermal.hottestSensorName = name(1);
  system.thermal.systemPowerWatts = 188.8;
  system.thermal.thermalStateLevel = 3;
  for (int sensor = 0; sensor < 6; ++sensor)
    system.thermal.sensors.push_back({name(sensor), "CPU", 80.0 + sensor});
  system.thermal.fans.resize(2);
  for (FanReading& fan : system.thermal.fans) fan.currentRPM = 5800;
  system.thermal.fans.front().name = "Left Fan";
  system.thermal.fans.back().id = 1;
  system.thermal.fans.back().name = name(4);
  system.thermal.fans.back().isManual = true;
  return system;
}

EngineSnapshot CrowdedMachine::snapshot(int turn) const {
  EngineSnapshot snapshot;
  snapshot.system = system(turn);
  for (int number = 0; number < applications; ++number) {
    // A few are away in each shape of the machine.
    const bool isAway = number > 10 && scatter(number, turn / stride) % 40U == 0;
    if (!isAway) snapshot.appGroups.push_back(application(number, turn));
  }
  std::stable_sort(
      snapshot.appGroups.begin(), snapshot.appGroups.end(),
      [](const AppGroup& one, const AppGroup& other) { return one.cpuPercent > other.cpuPercent; });
  for (int number = 0; number < 12; ++number) {
    snapshot.projects.push_back(project(number, application(number, turn)));
    snapshot.containers.push_back(container(number));
  }
  std::stable_sort(snapshot.projects.begin(), snapshot.projects.end(),
                   [](const DevProject& one, const DevProject& other) {
                     return one.memoryBytes > other.memoryBytes;
                   });
  for (const AppGroup& group : snapshot.appGroups) {
    for (const ProcessSample& process : group.processes) {
      for (const std::uint16_t port : process.listeningPorts) {
        snapshot.listeningPorts.push_back({.port = port,
                                           .pid = process.pid,
                                           .processName = process.name,
                                           .appName = group.name,
                                           .projectName = std::nullopt,
                                           .projectPath = "/home/ada/src/" + process.name,
                                           .isIdle = process.pid % 3 == 0,
                                           .memoryBytes = process.memoryBytes});
      }
    }
  }
  std::stable_sort(snapshot.listeningPorts.begin(), snapshot.listeningPorts.end(),
                   [](const ListeningPortItem& one, const ListeningPortItem& other) {
                     return one.port < other.port;
                   });
  for (int number = 0; number < 6; ++number) {
    snapshot.idleServers.push_back({.pid = 1000 + number * 8,
                                    .name = name(number),
                                    .projectName = name(number + 1),
                                    .projectPath = "/home/ada/src/" + name(number),
                                    .ports = {3000, 65535},
                                    .memoryBytes = 1234 * mebibyte,
                                    .startedAt = Instant{startTime - 200000},
                                    .idleSeconds = 180000});
    snapshot.agentSessions.push_back({.pid = 1001 + number,
                                      .toolName = name(number),
                                      .state = number % 3 == 0   ? AgentState::working
                                               : number % 3 == 1 ? AgentState::waitingForApproval
                                                                 : AgentState::idle,
                                      .projectName = name(number + 2),
                                      .projectPath = "/home/ada/src/" + name(number + 2),
                                      .cpuPercent = 123.4,
                                      .memoryBytes = 12345 * mebibyte,
                                      .tokensToday = 123456789,
                                      .tokensWeek = 1234567890,
                                      .childProcesses = {name(number + 3), name(number + 4)},
                                      .startedAt = Instant{startTime - 100000}});
  }
  for (int number = 0; number < 3; ++number) {
    snapshot.planLimits.push_back({.tool = name(number),
                                   .planName = "Max 20x",
                                   .fiveHourUsedPercent = 100,
                                   .fiveHourResetText = "resets in 4h 59m",
                                   .weeklyUsedPercent = 88.8,
                                   .weeklyResetText = "resets in 6d 23h",
                                   .tokensToday = 123456789,
                                   .tokensWeek = 1234567890});
    snapshot.sleepBlockers.push_back({.pid = 1000 + number,
                                      .processName = name(number),
                                      .assertionType = "PreventUserIdleSystemSleep",
                                      .reason = name(number + 1)});
    snapshot.bluetoothDevices.push_back({.name = name(number),
                                         .category = "headphones",
                                         .batteryPercent = 100,
                                         .leftPercent = 100,
                                         .rightPercent = 100,
                                         .casePercent = 100});
    snapshot.volumes.push_back({.name = name(number),
                                .path = "/media/ada/" + std::to_string(number),
                                .totalBytes = 8000000 * mebibyte,
                                .freeBytes = 7654321 * mebibyte,
                                .isInternal = number == 0,
                                .isRemovable = number == 2});
  }
  for (int number = 0; number < 12; ++number) snapshot.newInsights.push_back(insight(number, turn));
  if (turn / stride % 2 == 0) snapshot.activeStrains = {StrainKind::cpu, StrainKind::temperature};
  if (isAtRest) putToRest(snapshot);
  return snapshot;
}

void CrowdedMachine::putToRest(EngineSnapshot& snapshot) {
  snapshot.system.neuralEngineHolder.reset();
  snapshot.system.battery->isCharging = false;
  snapshot.system.battery->isPluggedIn = false;
  snapshot.system.thermal.fans.clear();
  snapshot.projects.clear();
  snapshot.containers.clear();
  snapshot.listeningPorts.clear();
  snapshot.idleServers.clear();
  snapshot.agentSessions.clear();
  snapshot.sleepBlockers.clear();
  snapshot.bluetoothDevices.clear();
  snapshot.newInsights.clear();
  snapshot.activeStrains.clear();
}

HardwareInfo CrowdedMachine::hardware() const {
  HardwareInfo hardware;
  if (hasLongNames) {
    hardware.chipName = longNames.front();
    hardware.gpuName = longNames.back();
  }
  hardware.logicalCores = 24;
  hardware.performanceCores = 16;
  hardware.efficiencyCores = 8;
  hardware.gpuCores = 76;
  hardware.totalMemoryBytes = 196608 * mebibyte;
  return hardware;
}

std::vector<Reading> CrowdedMachine::readings() const {
  std::vector<Reading> readings;
  for (int row = 0; row < 288; ++row) {
    Reading reading;
    reading.start = static_cast<std::int64_t>(startTime) - (288 - row) * 300;
    reading.cpuPercentAvg = 40 + 30 * std::sin(row / 20.0);
    reading.cpuPercentPeak = reading.cpuPercentAvg + upTo(25, row, 0);
    reading.memoryUsedBytesAvg = 1.2e11;
    reading.memoryUsedBytesPeak = 1.9e11;
    reading.gpuPercentAvg = 50;
    reading.gpuPercentPeak = 100;
    reading.cpuCelsiusAvg = 70;
    reading.cpuCelsiusPeak = 104.5;
    reading.powerWattsAvg = 60;
    reading.powerWattsPeak = 188.8;
    readings.push_back(reading);
  }
  return readings;
}

std::vector<HistoricalAppSummary> CrowdedMachine::appSummaries() const {
  std::vector<HistoricalAppSummary> summaries;
  for (int number = 0; number < 35; ++number) {
    HistoricalAppSummary summary;
    summary.appID = "/Applications/" + std::to_string(number) + ".app";
    summary.name = name(number);
    summary.activeSeconds = 86400;
    summary.cpuLoadSeconds = 123456.7;
    summary.memoryByteSeconds = 86400.0 * static_cast<double>(12345 * mebibyte);
    summary.peakMemoryBytes = 23456 * mebibyte;
    summary.networkBytesIn = 1234567 * mebibyte;
    summary.networkBytesOut = 1234567 * mebibyte;
    summary.diskBytesRead = 1234567 * mebibyte;
    summary.diskBytesWritten = 1234567 * mebibyte;
    summary.energyJoules = 1234567;
    summaries.push_back(summary);
  }
  return summaries;
}

AudioObjectCalls CrowdedMachine::audio() const {
  constexpr std::array<std::uint32_t, 3> devices{41, 42, 43};
  AudioObjectCalls calls;
  calls.AudioObjectGetPropertyDataSize = [](std::uint32_t object, const auto&, auto* size) {
    *size = object == kAudioObjectSystemObject ? sizeof devices : sizeof(AudioBufferList);
    return std::int32_t{0};
  };
  calls.AudioObjectGetPropertyData = [devices](std::uint32_t object, const auto& address,
                                               std::uint32_t* size, void* data) {
    AudioBufferList streams{};
    streams.mNumberBuffers = 1;
    streams.mBuffers[0].mNumberChannels = 2;
    const void* const answer = object == kAudioObjectSystemObject
                                   ? static_cast<const void*>(devices.data())
                                   : static_cast<const void*>(&streams);
    const std::size_t length = object != kAudioObjectSystemObject ? sizeof streams
                               : address.mSelector == kAudioHardwarePropertyDevices
                                   ? sizeof devices
                                   : sizeof devices.front();
    *size = static_cast<std::uint32_t>(length);
    std::memcpy(data, answer, length);
    return std::int32_t{0};
  };
  calls.copyTextProperty = [machine = *this](std::uint32_t object, const auto&) {
    return std::optional(machine.name(static_cast<int>(object)));
  };
  return calls;
}

}  // namespace korvantis::test
