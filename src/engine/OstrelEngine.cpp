#include "engine/OstrelEngine.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "analysis/QuitCheck.h"
#include "samplers/AppleSMCReader.h"

namespace korvantis {

namespace {

constexpr double firstTickSeconds = 2.0;
constexpr double leastTickSeconds = 0.5;
constexpr int politeSignal = 15;
constexpr int forcedSignal = 9;

constexpr int stopSignal(bool force) {
  return force ? forcedSignal : politeSignal;
}

bool requestQuit(const RunningApplication& application, bool force) {
  return force ? application.forceTerminate() : application.terminate();
}

}  // namespace

OstrelEngine& OstrelEngine::shared() {
  static OstrelEngine& engine = *new OstrelEngine(systemPlatformCalls());
  return engine;
}

OstrelEngine::OstrelEngine(PlatformCalls calls)
    : platform(std::move(calls)), collaborators(callsToOwnCollaborators()) {}

OstrelEngine::OstrelEngine(PlatformCalls calls, CollaboratorCalls collaboratorCalls)
    : platform(std::move(calls)), collaborators(std::move(collaboratorCalls)) {}

EngineSnapshot OstrelEngine::sampleTick(const std::vector<AppLimit>& appLimits,
                                        const std::vector<MutedApp>& mutedApps, double hotCelsius) {
  const Instant now{platform.clock.now()};
  double elapsed = exchangeTickDate(now);

  // The process sampler folds the GPU times in, so they come first.
  const GPUTimeByPID gpuTimes = collaborators.readPerPIDGPUTime();
  std::vector<ProcessSample> processes = collaborators.sampleProcesses(gpuTimes);
  std::vector<ContainerSample> containers = collaborators.sampleContainers();
  const std::uint64_t totalMemory = platform.processInfo.physicalMemory();
  std::vector<DevProject> projects =
      collaborators.groupProjects(processes, containers, totalMemory);
  std::vector<AppGroup> appGroups = collaborators.group(processes, totalMemory);
  const std::optional<std::string> topName =
      appGroups.empty() ? std::nullopt : std::optional(appGroups.front().name);
  elapsed = std::max(elapsed, leastTickSeconds);
  SystemSample system = collaborators.sampleSystem(topName);
  auto [idleServers, listeningPorts] = collaborators.evaluateServers(processes, appGroups);
  auto [newInsights, activeStrains] = collaborators.evaluateInsights(
      system, appGroups, idleServers, appLimits, mutedApps, hotCelsius);
  auto [agentSessions, planLimits] = collaborators.scanAgentsAndLimits(processes);
  std::vector<SleepBlocker> sleepBlockers = collaborators.sampleSleepBlockers();
  std::vector<BluetoothPeripheral> bluetoothDevices = collaborators.sampleBluetoothPeripherals();
  std::vector<MountedVolume> volumes = collaborators.sampleMountedVolumes();
  keepForQuitChecks(std::move(processes), sleepBlockers);
  collaborators.recordSample(system, appGroups, elapsed);

  return {.system = std::move(system),
          .appGroups = std::move(appGroups),
          .projects = std::move(projects),
          .containers = std::move(containers),
          .idleServers = std::move(idleServers),
          .listeningPorts = std::move(listeningPorts),
          .newInsights = std::move(newInsights),
          .activeStrains = std::move(activeStrains),
          .agentSessions = std::move(agentSessions),
          .planLimits = std::move(planLimits),
          .sleepBlockers = std::move(sleepBlockers),
          .bluetoothDevices = std::move(bluetoothDevices),
          .volumes = std::move(volumes)};
}

/// Seconds from the last tick's beginning to `now`, which takes its place.
double OstrelEngine::exchangeTickDate(Instant now) {
  const std::scoped_lock guard(lock);
  const std::optional<Instant> previous = std::exchange(lastTickDate, now);
  return previous ? secondsBetween(*previous, now) : firstTickSeconds;
}

void OstrelEngine::keepForQuitChecks(std::vector<ProcessSample> processes,
                                     std::vector<SleepBlocker> sleepBlockers) {
  // Swapped, so that the lists of the tick before are freed after the lock.
  const std::scoped_lock guard(lock);
  lastProcesses.swap(processes);
  lastSleepBlockers.swap(sleepBlockers);
}

HardwareInfo OstrelEngine::readHardwareInfo() {
  return collaborators.readHardwareInfo();
}

std::vector<Reading> OstrelEngine::loadReadings(Instant since) {
  return collaborators.loadReadings(since);
}

std::vector<HistoricalAppSummary> OstrelEngine::loadAppSummaries(Instant since) {
  return collaborators.loadAppSummaries(since);
}

std::optional<ExportedCSVFiles> OstrelEngine::exportCSVToDownloads(Instant since) {
  return collaborators.exportCSVToDownloads(since);
}

QuitSafetyResult OstrelEngine::checkQuitSafety(const AppGroup& group) {
  std::unique_lock guard(lock);
  const std::vector<SleepBlocker> sleepBlockers = lastSleepBlockers;
  guard.unlock();
  return collaborators.evaluateQuitOfGroup(group, sleepBlockers);
}

QuitSafetyResult OstrelEngine::checkQuitSafety(std::int32_t pid) {
  std::unique_lock guard(lock);
  const std::vector<ProcessSample> processes = lastProcesses;
  const std::vector<SleepBlocker> sleepBlockers = lastSleepBlockers;
  guard.unlock();
  return collaborators.evaluateQuitOfProcess(pid, processes, sleepBlockers);
}

bool OstrelEngine::quitAppGroup(const AppGroup& group, bool force) {
  if (group.bundleIdentifier && askInstancesToQuit(*group.bundleIdentifier, force)) {
    return true;
  }
  bool anyReached = false;
  for (const ProcessSample& process : group.processes) {
    anyReached = sendSignal(process.pid, stopSignal(force)) || anyReached;
  }
  return anyReached;
}

bool OstrelEngine::stopProcess(std::int32_t pid, bool force) {
  return askToQuit(pid, force) || sendSignal(pid, stopSignal(force));
}

int OstrelEngine::stopIdleServers(const std::vector<IdleServer>& servers) {
  int stopped = 0;
  for (const IdleServer& server : servers) {
    if (askToQuit(server.pid, false) || sendSignal(server.pid, politeSignal)) {
      ++stopped;
    }
  }
  return stopped;
}

/// Whether there is an instance and every one of them accepted. One that refuses does not spare
/// the others the request.
bool OstrelEngine::askInstancesToQuit(const std::string& bundleIdentifier, bool force) const {
  const std::vector<RunningApplication> instances =
      platform.runningApplications.runningApplicationsWithBundleIdentifier(bundleIdentifier);
  bool allAccepted = !instances.empty();
  for (const RunningApplication& instance : instances) {
    allAccepted = requestQuit(instance, force) && allAccepted;
  }
  return allAccepted;
}

bool OstrelEngine::askToQuit(std::int32_t pid, bool force) const {
  const std::optional<RunningApplication> application =
      platform.runningApplications.runningApplicationWithProcessIdentifier(pid);
  return application && requestQuit(*application, force);
}

/// A pid of 0 or below would reach a whole process group, or every process of the user; no single
/// process bears it, so nothing is sent.
bool OstrelEngine::sendSignal(std::int32_t pid, int signal) const {
  return pid > 0 && platform.posix.kill(pid, signal) == 0;
}

bool OstrelEngine::setFanTarget(std::int64_t fanID, std::optional<double> rpm) {
  return collaborators.setFanTarget(fanID, rpm);
}

void OstrelEngine::startBridgeListener(BridgeProvider provider) {
  const std::scoped_lock guard(lock);
  if (bridgeListener) {
    return;
  }
  bridgeListener = std::make_shared<BridgeListener>(platform, std::move(provider));
  bridgeListener->start();
}

CollaboratorCalls OstrelEngine::callsToOwnCollaborators() {
  using std::bind_front;
  using Hardware = SystemHardwareSampler;
  CollaboratorCalls calls;
  calls.readPerPIDGPUTime = bind_front(&Hardware::readPerPIDGPUTime, &hardwareSampler);
  calls.sampleProcesses = bind_front(&LibProcSampler::sampleProcesses, &procSampler);
  calls.sampleContainers = bind_front(&ContainerSampler::sampleContainers, &containerSampler);
  calls.groupProjects = bind_front(&ProjectLocator::groupProjects, &projectLocator);
  calls.group = bind_front(&AppGrouper::group, &appGrouper);
  calls.sampleSystem = bind_front(&Hardware::sampleSystem, &hardwareSampler);
  calls.evaluateServers = bind_front(&ServerWatcher::evaluate, &serverWatcher);
  calls.evaluateInsights = bind_front(&InsightEngine::evaluate, &insightEngine);
  calls.scanAgentsAndLimits = bind_front(&AgentScanner::scanAgentsAndLimits, &agentScanner);
  calls.sampleSleepBlockers = bind_front(&Hardware::sampleSleepBlockers, &hardwareSampler);
  calls.sampleBluetoothPeripherals =
      bind_front(&Hardware::sampleBluetoothPeripherals, &hardwareSampler);
  calls.sampleMountedVolumes = bind_front(&Hardware::sampleMountedVolumes, &hardwareSampler);
  calls.recordSample = bind_front(&HistoryDatabase::recordSample, &historyDB);
  calls.readHardwareInfo = bind_front(&Hardware::readHardwareInfo, &hardwareSampler);
  calls.loadReadings = bind_front(&HistoryDatabase::loadReadings, &historyDB);
  calls.loadAppSummaries = bind_front(&HistoryDatabase::loadAppSummaries, &historyDB);
  calls.exportCSVToDownloads = bind_front(&HistoryDatabase::exportCSVToDownloads, &historyDB);
  calls.evaluateQuitOfGroup = [](const auto& group, const auto& sleepBlockers) {
    return QuitCheck::evaluate(group, sleepBlockers);
  };
  calls.evaluateQuitOfProcess = [](auto pid, const auto& processes, const auto& sleepBlockers) {
    return QuitCheck::evaluate(pid, processes, sleepBlockers);
  };
  calls.setFanTarget = [](auto fanID, auto rpm) {
    return AppleSMCReader::shared().setFanTarget(fanID, rpm);
  };
  return calls;
}

}  // namespace korvantis
