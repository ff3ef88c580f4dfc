#include "state/ScriptedMonitor.h"

#include <utility>

namespace korvantis::test {

ScriptedMonitor::ScriptedMonitor() {
  nextSnapshot.system.timestamp = Instant{now};
}

MonitorEngineCalls ScriptedMonitor::engineCalls() {
  MonitorEngineCalls engine;
  engine.readHardwareInfo = [this] { return log.emplace_back("readHardwareInfo"), hardware; };
  engine.sampleTick = [this](const auto& limits, const auto& mutes, double hotCelsius) {
    log.emplace_back("sampleTick");
    ++ticks;
    tickLimits = limits;
    tickMutes = mutes;
    tickHotCelsius = hotCelsius;
    return nextSnapshot;
  };
  engine.loadReadings = [this](Instant since) {
    log.emplace_back("loadReadings");
    loadedSince.push_back(since.secondsSince1970);
    return storedReadings;
  };
  engine.loadAppSummaries = [this](Instant since) {
    log.emplace_back("loadAppSummaries");
    loadedSince.push_back(since.secondsSince1970);
    return storedSummaries;
  };
  engine.exportCSVToDownloads = [this](Instant since) {
    log.emplace_back("exportCSVToDownloads");
    exportedSince.push_back(since.secondsSince1970);
    return exported;
  };
  engine.checkQuitSafety = [this](const AppGroup& group) {
    log.push_back("checkQuitSafety " + group.id);
    return verdict;
  };
  engine.quitAppGroup = [this](const AppGroup& group, bool force) {
    log.push_back("quitAppGroup " + group.id + (force ? " by force" : ""));
    pidsToQuit.clear();
    for (const ProcessSample& process : group.processes) pidsToQuit.push_back(process.pid);
    return isStopAccepted;
  };
  engine.stopProcess = [this](std::int32_t pid, bool force) {
    log.push_back("stopProcess " + std::to_string(pid) + (force ? " by force" : ""));
    return isStopAccepted;
  };
  engine.stopIdleServers = [this](const auto& servers) {
    log.emplace_back("stopIdleServers");
    serversToStop = servers;
    return stoppedServers;
  };
  engine.setFanTarget = [this](std::int64_t fanID, std::optional<double> rpm) {
    log.emplace_back("setFanTarget");
    fanTargets.emplace_back(fanID, rpm);
    return false;
  };
  engine.startBridgeListener = [this](BridgeProvider given) {
    log.emplace_back("startBridgeListener");
    provider = std::move(given);
  };
  return engine;
}

MonitorStoreCalls ScriptedMonitor::calls() {
  MonitorStoreCalls calls;
  calls.engine = engineCalls();
  calls.mainRunLoop = runLoop.calls();
  calls.mainRunLoop.scheduleRepeatingTimer = [this,
                                              schedule = runLoop.calls().scheduleRepeatingTimer](
                                                 double seconds, std::function<void()> fire) {
    log.emplace_back("scheduleRepeatingTimer");
    return schedule(seconds, std::move(fire));
  };
  calls.clock.now = [this] { return now; };
  calls.userDefaults.stringForKey = [this](const std::string& key) -> std::optional<std::string> {
    log.push_back("stringForKey " + key);
    const auto entry = userDefaults.find(key);
    if (entry == userDefaults.end()) return std::nullopt;
    return entry->second;
  };
  calls.userDefaults.setString = [this](const std::string& key, const std::string& value) {
    userDefaults[key] = value;
  };
  if (processStarts) {
    calls.processStart = [this](std::int32_t pid) -> std::optional<double> {
      const auto entry = processStarts->find(pid);
      if (entry == processStarts->end()) return std::nullopt;
      return entry->second;
    };
  }
  calls.userDefaults.boolForKey = [this](const std::string& key) {
    log.push_back("boolForKey " + key);
    const auto entry = userDefaults.find(key);
    return entry != userDefaults.end() && entry->second == "true";
  };
  calls.userDefaults.setBool = [this](const std::string& key, bool value) {
    userDefaults[key] = value ? "true" : "false";
  };
  calls.audio.AudioObjectGetPropertyDataSize = [this](auto, const auto&, auto) {
    log.emplace_back("AudioObjectGetPropertyDataSize");
    return -1;
  };
  calls.appearance.detectSystemDarkMode = [this] { return systemIsDark; };
  calls.activateFileViewerSelectingURLs = [this](const auto& paths) { revealed.push_back(paths); };
  return calls;
}

MonitorStore& ScriptedMonitor::store() {
  if (!store_) store_ = std::make_unique<MonitorStore>(calls());
  return *store_;
}

Insight insight(InsightKind kind, std::optional<std::string> targetAppID, double createdAt) {
  Insight insight;
  insight.id = Uuid::random();
  insight.kind = kind;
  insight.targetAppID = std::move(targetAppID);
  insight.createdAt = Instant{createdAt};
  return insight;
}

AppGroup appGroup(const std::string& name, double cpuPercent, std::uint64_t memoryBytes) {
  AppGroup group;
  group.id = "/Applications/" + name + ".app";
  group.name = name;
  group.cpuPercent = cpuPercent;
  group.memoryBytes = memoryBytes;
  return group;
}

}  // namespace korvantis::test
