#include "core/FixedDecimals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace korvantis {

namespace {

/// More digits after the point than any double has; beyond them printf adds only zeros.
constexpr int mostDecimals = 1100;
constexpr std::size_t longestText =
    std::numeric_limits<double>::max_exponent10 + mostDecimals + sizeof("-1.");

}  // namespace

std::string fixedDecimals(double value, int decimals) {
  // The sign of "no number" differs between processors; nobody wants to read it.
  if (std::isnan(value)) return "nan";
  std::array<char, longestText> text{};
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed,
                    std::clamp(decimals, 0, mostDecimals));
  return std::string(text.data(), end);
}

}  // namespace korvantis
