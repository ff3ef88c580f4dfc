#pragma once

#include <cmath>

namespace korvantis {

/// `value` to one decimal, halves away from zero.
inline double roundedToOneDecimal(double value) {
  return std::round(value * 10.0) / 10.0;
}

}  // namespace korvantis
