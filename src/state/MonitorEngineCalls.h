#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "bridge/BridgeProvider.h"
#include "core/AppGroup.h"
#include "core/AppLimit.h"
#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/IdleServer.h"
#include "core/Instant.h"
#include "core/MutedApp.h"
#include "core/QuitSafetyResult.h"
#include "core/Reading.h"
#include "history/ExportedCSVFiles.h"

namespace korvantis {

class OstrelEngine;

/// What `MonitorStore` asks of the engine, under the engine's own names. Main thread.
struct MonitorEngineCalls {
  std::function<HardwareInfo()> readHardwareInfo;
  std::function<EngineSnapshot(const std::vector<AppLimit>& appLimits,
                               const std::vector<MutedApp>& mutedApps, double hotCelsius)>
      sampleTick;
  std::function<std::vector<Reading>(Instant since)> loadReadings;
  std::function<std::vector<HistoricalAppSummary>(Instant since)> loadAppSummaries;
  std::function<std::optional<ExportedCSVFiles>(Instant since)> exportCSVToDownloads;
  std::function<QuitSafetyResult(const AppGroup& group)> checkQuitSafety;
  std::function<bool(const AppGroup& group, bool force)> quitAppGroup;
  std::function<bool(std::int32_t pid, bool force)> stopProcess;
  std::function<int(const std::vector<IdleServer>& servers)> stopIdleServers;
  std::function<bool(std::int64_t fanID, std::optional<double> rpm)> setFanTarget;
  std::function<void(BridgeProvider provider)> startBridgeListener;
};

/// The calls of `engine`, which must outlive them.
MonitorEngineCalls monitorEngineCalls(OstrelEngine& engine);

}  // namespace korvantis
