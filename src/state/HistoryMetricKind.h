#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// The figures that the history pane can chart. The raw value is the label.
enum class HistoryMetricKind { cpu, memory, gpu, neuralEngine, temperature, fans, power };

template <>
struct EnumerationTable<HistoryMetricKind> {
  using Raw = std::string_view;
  using Row = EnumerationRow<HistoryMetricKind, Raw>;
  static constexpr std::array rows{Row{HistoryMetricKind::cpu, "CPU"},
                                   Row{HistoryMetricKind::memory, "Memory"},
                                   Row{HistoryMetricKind::gpu, "GPU"},
                                   Row{HistoryMetricKind::neuralEngine, "Neural Engine"},
                                   Row{HistoryMetricKind::temperature, "Temperature"},
                                   Row{HistoryMetricKind::fans, "Fans"},
                                   Row{HistoryMetricKind::power, "System Power"}};
};

template <>
struct CaseNames<HistoryMetricKind> {
  static constexpr std::array<std::string_view, 7> names{
      "cpu", "memory", "gpu", "neuralEngine", "temperature", "fans", "power"};
};

/// The unit of its figures.
constexpr std::string_view unit(HistoryMetricKind value) {
  switch (value) {
    case HistoryMetricKind::cpu:
    case HistoryMetricKind::memory:
    case HistoryMetricKind::gpu:
    case HistoryMetricKind::neuralEngine: return "%";
    case HistoryMetricKind::temperature: return "°C";
    case HistoryMetricKind::fans: return "RPM";
    case HistoryMetricKind::power: return "W";
  }
  return "";
}

}  // namespace korvantis
