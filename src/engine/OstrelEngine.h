#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "analysis/AgentScanner.h"
#include "analysis/AppGrouper.h"
#include "analysis/ContainerSampler.h"
#include "analysis/InsightEngine.h"
#include "analysis/ProjectLocator.h"
#include "analysis/ServerWatcher.h"
#include "bridge/BridgeListener.h"
#include "bridge/BridgeProvider.h"
#include "core/AppGroup.h"
#include "core/AppLimit.h"
#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/IdleServer.h"
#include "core/Instant.h"
#include "core/MutedApp.h"
#include "core/ProcessSample.h"
#include "core/QuitSafetyResult.h"
#include "core/Reading.h"
#include "core/SleepBlocker.h"
#include "engine/CollaboratorCalls.h"
#include "history/ExportedCSVFiles.h"
#include "history/HistoryDatabase.h"
#include "platform/PlatformCalls.h"
#include "samplers/LibProcSampler.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {

/// The spine of the program: it owns every sampler and analyser, turns the state of the machine
/// at one moment into one snapshot, and carries out what the user asks of live processes. It has
/// no policy of its own: thresholds belong to the analysers, timers to the stores.
///
/// Ticks and questions may come from several threads at once, and ticks may overlap. The stop
/// operations belong to the main thread.
class OstrelEngine {
 public:
  /// The one engine of this program over the real system, made on first use and never destroyed:
  /// the bridge's accept thread still uses it while the program exits. Any thread.
  static OstrelEngine& shared();

  /// An engine over `calls`, with samplers and analysers of its own.
  explicit OstrelEngine(PlatformCalls calls);

  /// An engine whose collaborators' answers come from `collaboratorCalls`.
  OstrelEngine(PlatformCalls calls, CollaboratorCalls collaboratorCalls);

  OstrelEngine(const OstrelEngine&) = delete;
  OstrelEngine& operator=(const OstrelEngine&) = delete;
  ~OstrelEngine() = default;

  /// What the machine is.
  HardwareInfo readHardwareInfo();

  /// Samples and judges everything once, on the calling thread. A source that fails leaves its
  /// part of the snapshot empty or at its stand-in. `hotCelsius` is the temperature from which
  /// the machine counts as hot.
  EngineSnapshot sampleTick(const std::vector<AppLimit>& appLimits,
                            const std::vector<MutedApp>& mutedApps, double hotCelsius = 85.0);

  /// The machine's stored readings from `since` on, oldest first; empty on failure.
  std::vector<Reading> loadReadings(Instant since);

  /// The stored totals of each application from `since` on; empty on failure.
  std::vector<HistoricalAppSummary> loadAppSummaries(Instant since);

  /// Writes the history from `since` on to the user's downloads; absent when nothing was written.
  std::optional<ExportedCSVFiles> exportCSVToDownloads(Instant since);

  /// Whether an application may be stopped, judged by the last finished tick.
  QuitSafetyResult checkQuitSafety(const AppGroup& group);

  /// Whether one process may be stopped, judged by the last finished tick.
  QuitSafetyResult checkQuitSafety(std::int32_t pid);

  /// Asks all running instances of the application to quit, or ends them when `force`. Where
  /// there is none, or one refuses, all processes of the group get signal 15, or 9 when `force`.
  /// Says whether all instances accepted or at least one signal was delivered.
  bool quitAppGroup(const AppGroup& group, bool force);

  /// Stops one process in the same two ways. Says whether either worked.
  bool stopProcess(std::int32_t pid, bool force);

  /// Asks each server to quit, else sends it signal 15, never 9. Gives how many of them took
  /// either.
  int stopIdleServers(const std::vector<IdleServer>& servers);

  /// Sets the speed of a fan in turns a minute, or gives it back to the system when `rpm` is
  /// absent. Says whether that was taken.
  bool setFanTarget(std::int64_t fanID, std::optional<double> rpm);

  /// Starts the local bridge with `provider` for its answers. Only the first call counts.
  void startBridgeListener(BridgeProvider provider);

 private:
  CollaboratorCalls callsToOwnCollaborators();
  double exchangeTickDate(Instant now);
  void keepForQuitChecks(std::vector<ProcessSample> processes,
                         std::vector<SleepBlocker> sleepBlockers);
  bool askInstancesToQuit(const std::string& bundleIdentifier, bool force) const;
  bool askToQuit(std::int32_t pid, bool force) const;
  bool sendSignal(std::int32_t pid, int signal) const;

  const PlatformCalls platform;

  SystemHardwareSampler hardwareSampler{platform};
  LibProcSampler procSampler{platform};
  AppGrouper appGrouper{platform.propertyLists};
  ProjectLocator projectLocator{platform.files};
  ContainerSampler containerSampler{platform};
  ServerWatcher serverWatcher{platform.clock};
  InsightEngine insightEngine{platform.clock, platform.random};
  AgentScanner agentScanner{platform.clock, platform.files};
  HistoryDatabase historyDB{platform};

  const CollaboratorCalls collaborators;

  /// Guards the fields below. Never held while sampling.
  std::mutex lock;
  /// When the last tick began.
  std::optional<Instant> lastTickDate;
  /// The processes of the last finished tick, with their projects.
  std::vector<ProcessSample> lastProcesses;
  std::vector<SleepBlocker> lastSleepBlockers;
  std::shared_ptr<BridgeListener> bridgeListener;
};

}  // namespace korvantis
