#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// The unit of temperatures on screen. The raw value is the label.
enum class TemperatureUnit { celsius, fahrenheit };

template <>
struct EnumerationTable<TemperatureUnit> {
  using Raw = std::string_view;
  using Row = EnumerationRow<TemperatureUnit, Raw>;
  static constexpr std::array rows{Row{TemperatureUnit::celsius, "Celsius (°C)"},
                                   Row{TemperatureUnit::fahrenheit, "Fahrenheit (°F)"}};
};

template <>
struct CaseNames<TemperatureUnit> {
  static constexpr std::array<std::string_view, 2> names{"celsius", "fahrenheit"};
};

/// A temperature in whole degrees of the unit, such as "45°C" or "113°F". Any thread.
std::string formatTemp(double celsius, TemperatureUnit unit);

}  // namespace korvantis
