#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/AgentScanner.h"
#include "analysis/InsightEngine.h"
#include "analysis/ServerWatcher.h"
#include "core/AppGroup.h"
#include "core/AppLimit.h"
#include "core/BluetoothPeripheral.h"
#include "core/ContainerSample.h"
#include "core/DevProject.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/IdleServer.h"
#include "core/Instant.h"
#include "core/MountedVolume.h"
#include "core/MutedApp.h"
#include "core/ProcessSample.h"
#include "core/QuitSafetyResult.h"
#include "core/Reading.h"
#include "core/SleepBlocker.h"
#include "core/SystemSample.h"
#include "history/ExportedCSVFiles.h"
#include "samplers/GPUTimeByPID.h"

namespace korvantis {

/// Everything that the engine asks of its samplers, analysers and history. The engine binds these
/// to the ones that it owns; a test binds them to functions of its own and sees the order of a
/// tick and what passes between its steps. All may be called from several threads at once.
struct CollaboratorCalls {
  // The steps of a tick, in their order.
  std::function<GPUTimeByPID()> readPerPIDGPUTime;
  std::function<std::vector<ProcessSample>(const GPUTimeByPID& perPIDGPUTime)> sampleProcesses;
  std::function<std::vector<ContainerSample>()> sampleContainers;
  std::function<std::vector<DevProject>(std::vector<ProcessSample>& processes,
                                        const std::vector<ContainerSample>& containers,
                                        std::uint64_t totalMemoryBytes)>
      groupProjects;
  std::function<std::vector<AppGroup>(const std::vector<ProcessSample>& processes,
                                      std::uint64_t totalMemoryBytes)>
      group;
  std::function<SystemSample(const std::optional<std::string>& topProcessForANE)> sampleSystem;
  std::function<ServerWatcher::Evaluation(const std::vector<ProcessSample>& processes,
                                          const std::vector<AppGroup>& appGroups)>
      evaluateServers;
  std::function<InsightEngine::Evaluation(
      const SystemSample& system, const std::vector<AppGroup>& appGroups,
      const std::vector<IdleServer>& idleServers, const std::vector<AppLimit>& appLimits,
      const std::vector<MutedApp>& mutedApps, double hotCelsius)>
      evaluateInsights;
  std::function<AgentScanner::Scan(const std::vector<ProcessSample>& processes)>
      scanAgentsAndLimits;
  std::function<std::vector<SleepBlocker>()> sampleSleepBlockers;
  std::function<std::vector<BluetoothPeripheral>()> sampleBluetoothPeripherals;
  std::function<std::vector<MountedVolume>()> sampleMountedVolumes;
  std::function<void(const SystemSample& system, const std::vector<AppGroup>& appGroups,
                     double elapsedSeconds)>
      recordSample;

  // What is asked of them outside a tick.
  std::function<HardwareInfo()> readHardwareInfo;
  std::function<std::vector<Reading>(Instant since)> loadReadings;
  std::function<std::vector<HistoricalAppSummary>(Instant since)> loadAppSummaries;
  std::function<std::optional<ExportedCSVFiles>(Instant since)> exportCSVToDownloads;
  std::function<QuitSafetyResult(const AppGroup& group,
                                 const std::vector<SleepBlocker>& sleepBlockers)>
      evaluateQuitOfGroup;
  std::function<QuitSafetyResult(std::int32_t pid, const std::vector<ProcessSample>& processes,
                                 const std::vector<SleepBlocker>& sleepBlockers)>
      evaluateQuitOfProcess;
  std::function<bool(std::int64_t fanID, std::optional<double> rpm)> setFanTarget;
};

}  // namespace korvantis
