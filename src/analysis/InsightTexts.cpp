#include "analysis/InsightTexts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/FixedDecimals.h"
#include "core/LowerCase.h"
#include "core/OstrelFormat.h"

namespace korvantis::InsightTexts {

namespace {

constexpr std::size_t mostPortsNamed = 4;

std::string wholePercent(double percent) {
  return fixedDecimals(percent, 0) + "%";
}

/// `value` cut toward zero, without a sign before a zero.
std::string cutToWhole(double value) {
  return fixedDecimals(std::trunc(value) + 0.0, 0);
}

std::string degrees(double celsius) {
  return fixedDecimals(celsius, 1) + "°C";
}

std::string nameOrSystem(const AppGroup* group) {
  return group == nullptr ? "System" : group->name;
}

Insight about(InsightKind kind, const AppGroup* group) {
  Insight insight;
  insight.kind = kind;
  if (group != nullptr) {
    insight.targetAppID = group->id;
    insight.targetAppName = group->name;
  }
  return insight;
}

/// The ports of all servers end to end, cut to the first few.
std::string joinedPorts(const std::vector<IdleServer>& servers) {
  std::string joined;
  std::size_t named = 0;
  for (const IdleServer& server : servers) {
    for (const std::uint16_t port : server.ports) {
      if (named == mostPortsNamed) return joined;
      if (named > 0) joined += ", ";
      joined += std::to_string(port);
      ++named;
    }
  }
  return joined;
}

/// The figure that a limit watches, as it is shown.
std::string figureText(AppLimitFigure figure, const AppGroup& app) {
  switch (figure) {
    case AppLimitFigure::cpuPercent: return wholePercent(app.cpuPercent) + " CPU";
    case AppLimitFigure::memoryMB: return OstrelFormat::bytes(app.memoryBytes);
    case AppLimitFigure::gpuPercent: return wholePercent(app.gpuPercent) + " GPU";
    case AppLimitFigure::energyWatts: return fixedDecimals(app.energyWatts, 1) + " W";
  }
  return "";
}

}  // namespace

Insight sustainedCPU(const AppGroup& app) {
  Insight insight = about(InsightKind::sustainedCPU, &app);
  insight.title = app.name + " using high CPU";
  insight.detail =
      "Sustained multi-core load across " + std::to_string(app.processes.size()) + " process(es).";
  insight.metricText = wholePercent(app.cpuPercent) + " CPU";
  return insight;
}

Insight memoryGrowth(const AppGroup& app, std::uint64_t baselineBytes) {
  Insight insight = about(InsightKind::memoryGrowth, &app);
  insight.title = app.name + " memory grew rapidly";
  insight.detail = "Footprint increased by " +
                   OstrelFormat::bytes(app.memoryBytes - baselineBytes) + " since baseline.";
  insight.metricText = OstrelFormat::bytes(app.memoryBytes);
  return insight;
}

Insight memoryPressure(const SystemSample& system, const AppGroup* topHolder) {
  Insight insight = about(InsightKind::memoryPressure, topHolder);
  insight.title = "Memory pressure is " + lowerCased(std::string(label(system.memoryPressure)));
  insight.detail = "Swap used: " + OstrelFormat::bytes(system.swapUsedBytes) +
                   ". Top holder: " + nameOrSystem(topHolder) + ".";
  insight.metricText = wholePercent(system.memoryPressurePercent) + " pressure";
  return insight;
}

Insight diskBurst(const SystemSample& system, const AppGroup* topWriter) {
  Insight insight = about(InsightKind::diskBurst, topWriter);
  insight.title = "Heavy disk write activity";
  insight.detail = nameOrSystem(topWriter) + " is writing heavily to storage.";
  insight.metricText = OstrelFormat::rate(system.diskWriteBytesPerSec);
  return insight;
}

Insight networkBurst(const SystemSample& system) {
  const double in = system.networkInBytesPerSec;
  const double out = system.networkOutBytesPerSec;
  Insight insight = about(InsightKind::networkBurst, nullptr);
  insight.title = "Sustained high network transfer";
  insight.detail = "Down " + OstrelFormat::rate(in) + " · Up " + OstrelFormat::rate(out);
  insight.metricText = OstrelFormat::rate(in + out);
  return insight;
}

Insight idleServers(const std::vector<IdleServer>& servers) {
  std::uint64_t total = 0;
  for (const IdleServer& server : servers) total += server.memoryBytes;
  Insight insight = about(InsightKind::idleServers, nullptr);
  insight.title = std::to_string(servers.size()) + " idle dev server" +
                  (servers.size() == 1 ? "" : "s") + " listening";
  insight.detail = "Ports " + joinedPorts(servers) + " idle for >30m.";
  insight.metricText = OstrelFormat::bytes(total);
  return insight;
}

Insight runningHot(const ThermalSample& thermal) {
  Insight insight = about(InsightKind::runningHot, nullptr);
  insight.title = "Mac is running warm (" + cutToWhole(thermal.hottestCelsius) + "°C)";
  insight.detail = "Hottest sensor: " + thermal.hottestSensorName + " at " +
                   degrees(thermal.hottestCelsius) + ".";
  insight.metricText = degrees(thermal.hottestCelsius);
  return insight;
}

Insight neuralEngineBusy(const std::string& holder, double percent) {
  Insight insight = about(InsightKind::neuralEngineBusy, nullptr);
  insight.title = "Neural Engine active (" + holder + ")";
  insight.detail = "On-device ML inference running on Apple Neural Engine.";
  insight.metricText = wholePercent(percent) + " ANE";
  return insight;
}

Insight appLimit(const AppGroup& app, const AppLimit& limit) {
  Insight insight = about(InsightKind::appLimit, &app);
  insight.metricText = figureText(limit.figure, app);
  insight.title = app.name + " passed " + std::string(rawValue(limit.figure)) + " limit";
  insight.detail =
      "Currently at " + insight.metricText + " (limit: " + cutToWhole(limit.limit) + ").";
  return insight;
}

Insight topMemoryHolder(const AppGroup& group) {
  Insight insight = about(InsightKind::memoryGrowth, &group);
  insight.title = group.name + " is top memory holder";
  insight.detail = std::to_string(group.processes.size()) + " processes active (" +
                   fixedDecimals(group.memoryPercent, 1) + "% of RAM).";
  insight.metricText = OstrelFormat::bytes(group.memoryBytes);
  return insight;
}

}  // namespace korvantis::InsightTexts
