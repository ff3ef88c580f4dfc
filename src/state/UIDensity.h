#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// How tightly the screens may be set. The raw value is the label.
enum class UIDensity { compact, comfortable };

template <>
struct EnumerationTable<UIDensity> {
  using Raw = std::string_view;
  using Row = EnumerationRow<UIDensity, Raw>;
  static constexpr std::array rows{Row{UIDensity::compact, "Compact"},
                                   Row{UIDensity::comfortable, "Comfortable"}};
};

template <>
struct CaseNames<UIDensity> {
  static constexpr std::array<std::string_view, 2> names{"compact", "comfortable"};
};

}  // namespace korvantis
