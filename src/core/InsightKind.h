#pragma once

#include <string_view>

#include "core/EnumerationTable.h"

namespace korvantis {

/// What kind of finding an insight is. The raw value is the name of the case.
enum class InsightKind {
  sustainedCPU,
  memoryGrowth,
  memoryPressure,
  diskBurst,
  networkBurst,
  idleServers,
  runningHot,
  neuralEngineBusy,
  appLimit
};

template <>
struct EnumerationTable<InsightKind> {
  using Raw = std::string_view;
  using Row = EnumerationRow<InsightKind, Raw>;
  static constexpr std::array rows{Row{InsightKind::sustainedCPU, "sustainedCPU"},
                                   Row{InsightKind::memoryGrowth, "memoryGrowth"},
                                   Row{InsightKind::memoryPressure, "memoryPressure"},
                                   Row{InsightKind::diskBurst, "diskBurst"},
                                   Row{InsightKind::networkBurst, "networkBurst"},
                                   Row{InsightKind::idleServers, "idleServers"},
                                   Row{InsightKind::runningHot, "runningHot"},
                                   Row{InsightKind::neuralEngineBusy, "neuralEngineBusy"},
                                   Row{InsightKind::appLimit, "appLimit"}};
};

/// The heading of an insight of this kind.
constexpr std::string_view title(InsightKind kind) {
  switch (kind) {
    case InsightKind::sustainedCPU: return "Sustained High CPU";
    case InsightKind::memoryGrowth: return "Memory Growth";
    case InsightKind::memoryPressure: return "Memory Pressure";
    case InsightKind::diskBurst: return "Heavy Disk Write";
    case InsightKind::networkBurst: return "Network Spike";
    case InsightKind::idleServers: return "Forgotten Dev Servers";
    case InsightKind::runningHot: return "Running Hot";
    case InsightKind::neuralEngineBusy: return "Neural Engine Active";
    case InsightKind::appLimit: return "App Limit Reached";
  }
  return "";
}

/// The name of the system symbol shown beside it.
constexpr std::string_view iconName(InsightKind kind) {
  switch (kind) {
    case InsightKind::sustainedCPU: return "cpu.fill";
    case InsightKind::memoryGrowth: return "memorychip.fill";
    case InsightKind::memoryPressure: return "gauge.with.dots.needle.100percent";
    case InsightKind::diskBurst: return "internaldrive.fill";
    case InsightKind::networkBurst: return "network";
    case InsightKind::idleServers: return "server.rack";
    case InsightKind::runningHot: return "flame.fill";
    case InsightKind::neuralEngineBusy: return "brain.head.profile";
    case InsightKind::appLimit: return "bell.badge.fill";
  }
  return "";
}

}  // namespace korvantis
