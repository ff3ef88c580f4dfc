#include "ui/ScriptedStore.h"

#include "analysis/QuitCheck.h"
#include "platform/qt/QtUserDefaults.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {

MonitorStore& ScriptedStore::store() {
  if (!store_) store_ = std::make_unique<MonitorStore>(calls());
  return *store_;
}

MonitorStoreCalls ScriptedStore::calls() {
  MonitorStoreCalls calls;
  calls.audio = audio.calls();
  calls.engine.readHardwareInfo = [this] { return hardware; };
  calls.engine.sampleTick = [this](const auto&, const auto&, double) {
    ++ticks;
    return next;
  };
  calls.engine.loadReadings = [this](Instant since) {
    readingLoads.push_back(since);
    return loadReadings(since);
  };
  calls.engine.loadAppSummaries = [this](Instant since) { return loadAppSummaries(since); };
  calls.engine.exportCSVToDownloads = [this](Instant) {
    ++exports;
    return exported;
  };
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
  calls.clock.now = [this] { return now; };
  calls.userDefaults.stringForKey = [](const std::string&) { return std::nullopt; };
  calls.userDefaults.setString = [](const std::string&, const std::string&) {};
  if (!settingsPath.empty()) calls.userDefaults = qtUserDefaultsCalls(settingsPath);
  scriptDelivery(calls);
  calls.appearance.detectSystemDarkMode = [this] { return systemIsDark; };
  calls.applicationAppearance.setThemeIsDark = &OstrelTheme::setIsDark;
  return calls;
}

void ScriptedStore::plugInAudio() {
  audio.devices = {
      {70, "Headphones", {2}, {}}, {71, "Microphone", {}, {1}}, {72, "Interface", {2, 6}, {4}}};
  audio.defaultOutput = 72;
  audio.defaultInput = 71;
}

void ScriptedStore::scriptDelivery(MonitorStoreCalls& calls) {
  calls.background.detached = [this](std::function<void()> task) {
    backgroundTasks_.push_back(std::move(task));
  };
  calls.tasks.launch = [this](const auto&, const auto&) {
    sent.emplace_back("program");
    return TaskLaunch{.task = {}, .error = "not here"};
  };
  calls.http.dataForRequest = [this](const HTTPRequest& request) {
    sent.emplace_back("request");
    requestedURL = request.url;
    return HTTPAnswer{.error = {}, .statusCode = 200};
  };
  calls.workspace.openURL = [this](const std::string&, const std::function<void(bool)>& opened) {
    sent.emplace_back("open");
    opened(true);
  };
}

void ScriptedStore::runBackground() {
  for (const auto& task : std::exchange(backgroundTasks_, {})) task();
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

std::vector<Reading> makeReadings(int count, std::int64_t lastStart) {
  std::vector<Reading> readings;
  for (int number = 1; number <= count; ++number) {
    Reading reading;
    reading.start = lastStart - 300LL * (count - number);
    reading.cpuPercentAvg = number;
    reading.cpuPercentPeak = number + 10;
    readings.push_back(reading);
  }
  return readings;
}

std::vector<HistoricalAppSummary> makeSummaries(int count) {
  std::vector<HistoricalAppSummary> summaries;
  for (int number = 1; number <= count; ++number) {
    HistoricalAppSummary summary;
    summary.name = "Application " + std::to_string(number);
    summary.appID = "daemon:" + summary.name;
    summary.energyJoules = 3600.0 * number;
    summaries.push_back(summary);
  }
  return summaries;
}

HistoricalAppSummary makeFullSummary() {
  HistoricalAppSummary summary;
  summary.appID = "/Applications/Xcode.app";
  summary.name = "Xcode";
  summary.bundlePath = "/Applications/Xcode.app";
  summary.activeSeconds = 100;
  summary.cpuLoadSeconds = 9940;
  summary.memoryByteSeconds = 100.0 * 1024 * 1024 * 300;
  summary.peakMemoryBytes = 3ULL << 30U;
  summary.networkBytesIn = 400 << 20U;
  summary.networkBytesOut = 140 << 20U;
  summary.diskBytesRead = 1ULL << 30U;
  summary.diskBytesWritten = 1ULL << 29U;
  summary.energyJoules = 18400;
  return summary;
}

std::vector<Insight> makeInsights(int count) {
  std::vector<Insight> insights;
  for (int number = 0; number < count; ++number) {
    Insight insight;
    insight.id.bytes[0] = static_cast<std::uint8_t>(number);
    insight.targetAppID = "app-" + std::to_string(number);
    insight.targetAppName = "App " + std::to_string(number);
    insight.title = "Finding " + std::to_string(number);
    insight.detail = "It has used the processor for minutes.";
    insight.metricText = "150% CPU";
    insight.createdAt = Instant{static_cast<double>(number)};
    insights.push_back(insight);
  }
  return insights;
}

AgentSession makeAgent(std::int32_t pid, int children) {
  AgentSession session;
  session.pid = pid;
  session.toolName = "Claude Code";
  session.projectName = "project" + std::to_string(pid);
  session.projectPath = "/home/me/work/project" + std::to_string(pid);
  for (int number = 1; number <= children; ++number) {
    session.childProcesses.push_back("child" + std::to_string(number));
  }
  return session;
}

std::vector<PlanLimitStatus> makePlanLimits() {
  return {{.tool = "Claude Code",
           .planName = "Max 5x Plan",
           .fiveHourUsedPercent = 40.9,
           .fiveHourResetText = "Resets in 2h 18m",
           .weeklyUsedPercent = 40.6,
           .weeklyResetText = "Resets Thu 9:00 AM",
           .paceText = "On pace",
           .tokensToday = 184200,
           .tokensWeek = 1420500,
           .colorHex = "#d97757"},
          {.tool = "Codex",
           .planName = "Pro Plan",
           .fiveHourUsedPercent = 19.3,
           .fiveHourResetText = "Resets in 3h 42m",
           .weeklyUsedPercent = 19,
           .weeklyResetText = "Resets Mon 12:00 AM",
           .paceText = "Plenty left",
           .tokensToday = 96400,
           .tokensWeek = 680000,
           .colorHex = "#3068d8"}};
}

}  // namespace korvantis
