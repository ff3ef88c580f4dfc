#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// When the status item takes colours. The raw value is the label.
enum class MenuBarColorMode { monochrome, strainOnly, colour };

template <>
struct EnumerationTable<MenuBarColorMode> {
  using Raw = std::string_view;
  using Row = EnumerationRow<MenuBarColorMode, Raw>;
  static constexpr std::array rows{Row{MenuBarColorMode::monochrome, "Monochrome"},
                                   Row{MenuBarColorMode::strainOnly, "Colour on strain"},
                                   Row{MenuBarColorMode::colour, "Full colour"}};
};

template <>
struct CaseNames<MenuBarColorMode> {
  static constexpr std::array<std::string_view, 3> names{"monochrome", "strainOnly", "colour"};
};

}  // namespace korvantis
