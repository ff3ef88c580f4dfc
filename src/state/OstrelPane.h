#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// The panes of the window and the popover, in the order of their tabs.
enum class OstrelPane { overview, processes, insights, history, agents, sound };

template <>
struct EnumerationTable<OstrelPane> {
  using Raw = std::string_view;
  using Row = EnumerationRow<OstrelPane, Raw>;
  static constexpr std::array rows{
      Row{OstrelPane::overview, "overview"}, Row{OstrelPane::processes, "processes"},
      Row{OstrelPane::insights, "insights"}, Row{OstrelPane::history, "history"},
      Row{OstrelPane::agents, "agents"},     Row{OstrelPane::sound, "sound"}};
};

template <>
struct CaseNames<OstrelPane> {
  static constexpr std::array<std::string_view, 6> names{"overview", "processes", "insights",
                                                         "history",  "agents",    "sound"};
};

/// The words on its tab.
constexpr std::string_view title(OstrelPane pane) {
  switch (pane) {
    case OstrelPane::overview: return "Overview";
    case OstrelPane::processes: return "Processes";
    case OstrelPane::insights: return "Insights";
    case OstrelPane::history: return "History";
    case OstrelPane::agents: return "Agents";
    case OstrelPane::sound: return "Sound";
  }
  return "";
}

/// The name of the system symbol on its tab.
constexpr std::string_view iconName(OstrelPane pane) {
  switch (pane) {
    case OstrelPane::overview: return "square.grid.2x2.fill";
    case OstrelPane::processes: return "list.bullet.below.rectangle";
    case OstrelPane::insights: return "bolt.heart.fill";
    case OstrelPane::history: return "chart.xyaxis.line";
    case OstrelPane::agents: return "sparkles.rectangle.stack.fill";
    case OstrelPane::sound: return "slider.horizontal.below.waveform";
  }
  return "";
}

/// The digit that shows the pane together with the command key: "1" for the first one.
constexpr char shortcutKey(OstrelPane pane) {
  return static_cast<char>('1' + static_cast<int>(pane));
}

}  // namespace korvantis
