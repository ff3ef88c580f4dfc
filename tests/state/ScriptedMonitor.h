#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "state/MonitorStore.h"
#include "state/ScriptedRunLoop.h"

namespace korvantis::test {

/// A `MonitorStore` over a scripted engine, run loop, clock, settings and desktop. Everything
/// that the store asks of the engine is written down in `log`, in order.
class ScriptedMonitor {
 public:
  ScriptedRunLoop runLoop;
  std::vector<std::string> log;
  double now = 1'700'000'000;
  std::map<std::string, std::string> userDefaults;
  bool systemIsDark = false;

  HardwareInfo hardware;
  /// What the next tick gives.
  EngineSnapshot nextSnapshot;
  /// The last arguments of a tick.
  std::vector<AppLimit> tickLimits;
  std::vector<MutedApp> tickMutes;
  double tickHotCelsius = 0;
  int ticks = 0;

  std::vector<Reading> storedReadings;
  std::vector<HistoricalAppSummary> storedSummaries;
  std::vector<double> loadedSince;
  std::optional<ExportedCSVFiles> exported;
  std::vector<double> exportedSince;
  std::vector<std::vector<std::string>> revealed;

  QuitSafetyResult verdict;
  bool isStopAccepted = true;
  int stoppedServers = 0;
  std::vector<IdleServer> serversToStop;
  std::vector<std::int32_t> pidsToQuit;
  /// When each process began; absent when nobody is to ask. Settled when the store is made.
  std::optional<std::map<std::int32_t, double>> processStarts;
  std::vector<std::pair<std::int64_t, std::optional<double>>> fanTargets;
  BridgeProvider provider;

  ScriptedMonitor();

  MonitorStoreCalls calls();

  /// The store, made at the first use.
  MonitorStore& store();

  /// Ends the store; what it has scheduled stays with the run loop.
  void endStore() { store_.reset(); }

 private:
  MonitorEngineCalls engineCalls();

  std::unique_ptr<MonitorStore> store_;
};

/// A finding with an id of its own.
Insight insight(InsightKind kind, std::optional<std::string> targetAppID, double createdAt);

/// An application with that load.
AppGroup appGroup(const std::string& name, double cpuPercent, std::uint64_t memoryBytes);

}  // namespace korvantis::test
