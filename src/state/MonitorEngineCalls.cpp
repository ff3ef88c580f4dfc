#include "state/MonitorEngineCalls.h"

#include <utility>

#include "engine/OstrelEngine.h"

namespace korvantis {

MonitorEngineCalls monitorEngineCalls(OstrelEngine& engine) {
  return {
      .readHardwareInfo = [&engine] { return engine.readHardwareInfo(); },
      .sampleTick =
          [&engine](const std::vector<AppLimit>& appLimits, const std::vector<MutedApp>& mutedApps,
                    double hotCelsius) {
            return engine.sampleTick(appLimits, mutedApps, hotCelsius);
          },
      .loadReadings = [&engine](Instant since) { return engine.loadReadings(since); },
      .loadAppSummaries = [&engine](Instant since) { return engine.loadAppSummaries(since); },
      .exportCSVToDownloads =
          [&engine](Instant since) { return engine.exportCSVToDownloads(since); },
      .checkQuitSafety = [&engine](const AppGroup& group) { return engine.checkQuitSafety(group); },
      .quitAppGroup = [&engine](const AppGroup& group,
                                bool force) { return engine.quitAppGroup(group, force); },
      .stopProcess = [&engine](std::int32_t pid,
                               bool force) { return engine.stopProcess(pid, force); },
      .stopIdleServers =
          [&engine](const std::vector<IdleServer>& servers) {
            return static_cast<int>(engine.stopIdleServers(servers));
          },
      .setFanTarget = [&engine](
                          std::int64_t fanID,
                          std::optional<double> rpm) { return engine.setFanTarget(fanID, rpm); },
      .startBridgeListener =
          [&engine](BridgeProvider provider) { engine.startBridgeListener(std::move(provider)); },
  };
}

}  // namespace korvantis
