#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// The colour pairs offered for charts. The raw value is the label.
enum class ChartPalette { forest, ember, ocean, iris, mono };

template <>
struct EnumerationTable<ChartPalette> {
  using Raw = std::string_view;
  using Row = EnumerationRow<ChartPalette, Raw>;
  static constexpr std::array rows{
      Row{ChartPalette::forest, "Forest"}, Row{ChartPalette::ember, "Ember"},
      Row{ChartPalette::ocean, "Ocean"}, Row{ChartPalette::iris, "Iris"},
      Row{ChartPalette::mono, "Mono"}};
};

template <>
struct CaseNames<ChartPalette> {
  static constexpr std::array<std::string_view, 5> names{"forest", "ember", "ocean", "iris",
                                                         "mono"};
};

}  // namespace korvantis
