#pragma once

#include <string>

namespace korvantis {

/// `value` with exactly `decimals` digits after a point, rounded as C's printf rounds ("%.0f" of
/// 2.5 is "2"), whatever the locale. Any thread.
std::string fixedDecimals(double value, int decimals);

/// The same at the end of `text`, for those who write many figures into one. Any thread.
void appendFixedDecimals(std::string& text, double value, int decimals);

}  // namespace korvantis
