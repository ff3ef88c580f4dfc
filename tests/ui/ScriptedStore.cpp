#include "ui/ScriptedStore.h"

#include "analysis/QuitCheck.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {

MonitorStore& ScriptedStore::store() {
  if (!store_) store_ = std::make_unique<MonitorStore>(calls());
  return *store_;
}

MonitorStoreCalls ScriptedStore::calls() {
  MonitorStoreCalls calls;
  calls.engine.readHardwareInfo = [this] { return hardware; };
  calls.engine.sampleTick = [this](const auto&, const auto&, double) {
    ++ticks;
    return next;
  };
  calls.engine.loadReadings = [](Instant) { return std::vector<Reading>{}; };
  calls.engine.loadAppSummaries = [](Instant) { return std::vector<HistoricalAppSummary>{}; };
  calls.engine.quitAppGroup = [this](const AppGroup& group, bool force) {
    quitGroups.emplace_back(group.id, force);
    return true;
  };
  calls.engine.stopProcess = [this](std::int32_t pid, bool force) {
    stoppedProcesses.emplace_back(pid, force);
    return true;
  };
  calls.engine.stopIdleServers = [this](const std::vector<IdleServer>& servers) {
    for (const IdleServer& server : servers) stoppedProcesses.emplace_back(server.pid, false);
    return static_cast<int>(servers.size());
  };
  calls.engine.checkQuitSafety = [this](const AppGroup& group) {
    ++verdicts;
    return QuitCheck::evaluate(group, next.sleepBlockers);
  };
  calls.engine.setFanTarget = [this](std::int64_t fanID, std::optional<double> rpm) {
    fanWishes.emplace_back(fanID, rpm);
    return true;
  };
  calls.engine.startBridgeListener = [](const BridgeProvider&) {};
  calls.mainRunLoop.scheduleRepeatingTimer = [this](double seconds, std::function<void()>) {
    timerPeriods.push_back(seconds);
    return RepeatingTimer{[] {}};
  };
  calls.mainRunLoop.async = [](const std::function<void()>& task) { task(); };
  calls.mainRunLoop.asyncAfter = [](double, const std::function<void()>&) {};
  calls.clock.now = [] { return 1000.0; };
  calls.userDefaults.stringForKey = [](const std::string&) { return std::nullopt; };
  calls.userDefaults.setString = [](const std::string&, const std::string&) {};
  calls.appearance.detectSystemDarkMode = [this] { return systemIsDark; };
  calls.applicationAppearance.setThemeIsDark = &OstrelTheme::setIsDark;
  return calls;
}

AppGroup makeGroup(const std::string& name, std::vector<ProcessSample> processes) {
  AppGroup group;
  group.id = "daemon:" + name;
  group.name = name;
  for (const ProcessSample& process : processes) {
    group.cpuPercent += process.cpuPercent;
    group.memoryBytes += process.memoryBytes;
    group.diskReadBytesPerSec += process.diskReadBytesPerSec;
    group.diskWriteBytesPerSec += process.diskWriteBytesPerSec;
  }
  group.processes = std::move(processes);
  return group;
}

ProcessSample makeProcess(std::int32_t pid, const std::string& name) {
  ProcessSample process;
  process.pid = pid;
  process.name = name;
  process.startedAt = Instant{static_cast<double>(pid)};
  return process;
}

std::vector<Insight> makeInsights(int count) {
  std::vector<Insight> insights;
  for (int number = 0; number < count; ++number) {
    Insight insight;
    insight.id.bytes[0] = static_cast<std::uint8_t>(number);
    insight.targetAppID = "app-" + std::to_string(number);
    insight.title = "Finding " + std::to_string(number);
    insight.detail = "It has used the processor for minutes.";
    insight.metricText = "150% CPU";
    insight.createdAt = Instant{static_cast<double>(number)};
    insights.push_back(insight);
  }
  return insights;
}

}  // namespace korvantis
