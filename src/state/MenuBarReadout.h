#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// What the status item can show, in the order in which it shows them. The raw value is the label
/// of the settings.
enum class MenuBarReadout {
  cpu,
  memory,
  gpu,
  neuralEngine,
  network,
  disk,
  temperature,
  fans,
  battery,
  power,
  agents
};

template <>
struct EnumerationTable<MenuBarReadout> {
  using Raw = std::string_view;
  using Row = EnumerationRow<MenuBarReadout, Raw>;
  static constexpr std::array rows{Row{MenuBarReadout::cpu, "CPU"},
                                   Row{MenuBarReadout::memory, "Memory"},
                                   Row{MenuBarReadout::gpu, "GPU"},
                                   Row{MenuBarReadout::neuralEngine, "Neural Engine"},
                                   Row{MenuBarReadout::network, "Network"},
                                   Row{MenuBarReadout::disk, "Disk"},
                                   Row{MenuBarReadout::temperature, "Temperature"},
                                   Row{MenuBarReadout::fans, "Fans"},
                                   Row{MenuBarReadout::battery, "Battery"},
                                   Row{MenuBarReadout::power, "Power"},
                                   Row{MenuBarReadout::agents, "Agents"}};
};

template <>
struct CaseNames<MenuBarReadout> {
  static constexpr std::array<std::string_view, 11> names{
      "cpu",         "memory", "gpu",     "neuralEngine", "network", "disk",
      "temperature", "fans",   "battery", "power",        "agents"};
};

/// The words for it where room is short.
constexpr std::string_view shortLabel(MenuBarReadout value) {
  switch (value) {
    case MenuBarReadout::cpu: return "CPU";
    case MenuBarReadout::memory: return "MEM";
    case MenuBarReadout::gpu: return "GPU";
    case MenuBarReadout::neuralEngine: return "ANE";
    case MenuBarReadout::network: return "NET";
    case MenuBarReadout::disk: return "DSK";
    case MenuBarReadout::temperature: return "TMP";
    case MenuBarReadout::fans: return "FAN";
    case MenuBarReadout::battery: return "BAT";
    case MenuBarReadout::power: return "PWR";
    case MenuBarReadout::agents: return "AI";
  }
  return "";
}

/// The name of its system symbol.
constexpr std::string_view iconName(MenuBarReadout value) {
  switch (value) {
    case MenuBarReadout::cpu: return "cpu";
    case MenuBarReadout::memory: return "memorychip";
    case MenuBarReadout::gpu: return "display";
    case MenuBarReadout::neuralEngine: return "brain";
    case MenuBarReadout::network: return "arrow.up.arrow.down";
    case MenuBarReadout::disk: return "internaldrive";
    case MenuBarReadout::temperature: return "thermometer.medium";
    case MenuBarReadout::fans: return "fanblade";
    case MenuBarReadout::battery: return "battery.100";
    case MenuBarReadout::power: return "bolt.fill";
    case MenuBarReadout::agents: return "sparkles";
  }
  return "";
}

}  // namespace korvantis
