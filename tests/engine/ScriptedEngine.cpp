#include "engine/ScriptedEngine.h"

#include <algorithm>
#include <memory>

#include "support/PrivateFolders.h"

namespace korvantis::test {

CollaboratorCalls emptyCollaborators() {
  CollaboratorCalls calls;
  calls.readPerPIDGPUTime = [] { return GPUTimeByPID{}; };
  calls.sampleProcesses = [](const auto&) { return std::vector<ProcessSample>{}; };
  calls.sampleContainers = [] { return std::vector<ContainerSample>{}; };
  calls.groupProjects = [](auto&, const auto&, auto) { return std::vector<DevProject>{}; };
  calls.group = [](const auto&, auto) { return std::vector<AppGroup>{}; };
  calls.sampleSystem = [](const auto&) { return SystemSample{}; };
  calls.evaluateServers = [](const auto&, const auto&) { return ServerWatcher::Evaluation{}; };
  calls.evaluateInsights = [](const auto&, const auto&, const auto&, const auto&, const auto&,
                              double) { return InsightEngine::Evaluation{}; };
  calls.scanAgentsAndLimits = [](const auto&) { return AgentScanner::Scan{}; };
  calls.sampleSleepBlockers = [] { return std::vector<SleepBlocker>{}; };
  calls.sampleBluetoothPeripherals = [] { return std::vector<BluetoothPeripheral>{}; };
  calls.sampleMountedVolumes = [] { return std::vector<MountedVolume>{}; };
  calls.recordSample = [](const auto&, const auto&, double) {};
  calls.readHardwareInfo = [] { return HardwareInfo{}; };
  calls.loadReadings = [](Instant) { return std::vector<Reading>{}; };
  calls.loadAppSummaries = [](Instant) { return std::vector<HistoricalAppSummary>{}; };
  calls.exportCSVToDownloads = [](Instant) { return std::optional<ExportedCSVFiles>{}; };
  calls.evaluateQuitOfGroup = [](const auto&, const auto&) { return QuitSafetyResult{}; };
  calls.evaluateQuitOfProcess = [](auto, const auto&, const auto&) { return QuitSafetyResult{}; };
  calls.setFanTarget = [](auto, auto) { return false; };
  return calls;
}

PlatformCalls platformWithoutProcesses() {
  PlatformCalls platform = systemPlatformCalls();
  usePrivateFolders(platform);
  platform.libProc.proc_listallpids = [](void*, int) { return 0; };
  platform.posix.kill = [](std::int32_t, int) { return -1; };
  platform.files.fileExistsAtPath = [](const std::string&) { return false; };
  // No test puts a socket where the user's own program has its.
  platform.sockets.unlink = [](const char*) { return -1; };
  platform.sockets.socket = [](int, int, int) { return -1; };
  return platform;
}

ProcessSample processNamed(std::int32_t pid, const std::string& name) {
  ProcessSample process;
  process.pid = pid;
  process.responsiblePID = pid;
  process.name = name;
  return process;
}

ScriptedEngine::ScriptedEngine()
    : platform(platformWithoutProcesses()), collaborators(emptyCollaborators()) {
  platform.clock.now = [this] { return now; };
  platform.processInfo.physicalMemory = [this] { return physicalMemory; };
  platform.posix.kill = [this](std::int32_t pid, int signal) {
    signals.emplace_back(pid, signal);
    return std::ranges::count(reachablePIDs, pid) > 0 ? 0 : -1;
  };
  auto& running = platform.runningApplications;
  running.runningApplicationsWithBundleIdentifier = [this](const std::string& identifier) {
    std::vector<RunningApplication> instances;
    for (const ScriptedApplication& script : applicationsByIdentifier[identifier]) {
      instances.push_back(application(identifier, script));
    }
    return instances;
  };
  running.runningApplicationWithProcessIdentifier =
      [this](std::int32_t pid) -> std::optional<RunningApplication> {
    const auto found = applicationsByPID.find(pid);
    if (found == applicationsByPID.end()) return std::nullopt;
    return application("pid " + std::to_string(pid), found->second);
  };
}

OstrelEngine& ScriptedEngine::engine() {
  if (!engine_) engine_ = std::make_unique<OstrelEngine>(platform, collaborators);
  return *engine_;
}

RunningApplication ScriptedEngine::application(const std::string& label,
                                               ScriptedApplication script) {
  return {.terminate =
              [this, label, script] {
                requests.push_back("terminate " + label);
                return script.acceptsTerminate;
              },
          .forceTerminate =
              [this, label, script] {
                requests.push_back("forceTerminate " + label);
                return script.acceptsForceTerminate;
              }};
}

}  // namespace korvantis::test
