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

void appendFixedDecimals(std::string& text, double value, int decimals) {
  // The sign of "no number" differs between processors; nobody wants to read it.
  if (std::isnan(value)) {
    text += "nan";
    return;
  }
  std::array<char, longestText> digits;  // NOLINT: filled by to_chars
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed,
                    std::clamp(decimals, 0, mostDecimals));
  text.append(digits.data(), end);
}

std::string fixedDecimals(double value, int decimals) {
  std::string text;
  appendFixedDecimals(text, value, decimals);
  return text;
}

}  // namespace korvantis
