#include "state/TemperatureUnit.h"

#include "core/FixedDecimals.h"

namespace korvantis {

std::string formatTemp(double celsius, TemperatureUnit unit) {
  if (unit == TemperatureUnit::fahrenheit) return fixedDecimals(celsius * 9 / 5 + 32, 0) + "°F";
  return fixedDecimals(celsius, 0) + "°C";
}

}  // namespace korvantis
