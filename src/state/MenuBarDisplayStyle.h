#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// How the status item shows its readouts. The raw value is the label.
enum class MenuBarDisplayStyle { value, graph, both };

template <>
struct EnumerationTable<MenuBarDisplayStyle> {
  using Raw = std::string_view;
  using Row = EnumerationRow<MenuBarDisplayStyle, Raw>;
  static constexpr std::array rows{Row{MenuBarDisplayStyle::value, "Value only"},
                                   Row{MenuBarDisplayStyle::graph, "Sparkline"},
                                   Row{MenuBarDisplayStyle::both, "Icon + Value"}};
};

template <>
struct CaseNames<MenuBarDisplayStyle> {
  static constexpr std::array<std::string_view, 3> names{"value", "graph", "both"};
};

}  // namespace korvantis
