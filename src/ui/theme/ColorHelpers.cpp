#include "ui/theme/ColorHelpers.h"

#include <algorithm>

namespace korvantis::Color {

namespace {

constexpr std::uint32_t fallback = 0x0A84FF;

/// A half of a surrogate pair counts as neither, so that letters outside the basic plane are
/// trimmed.
bool isLetterOrDigit(QChar character) {
  return character.isLetterOrNumber();
}

QStringView trimmed(QStringView text) {
  while (!text.isEmpty() && !isLetterOrDigit(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && !isLetterOrDigit(text.back())) text.chop(1);
  return text;
}

bool isHexDigit(QChar character) {
  const auto code = character.unicode();
  return (code >= '0' && code <= '9') || (code >= 'a' && code <= 'f') ||
         (code >= 'A' && code <= 'F');
}

std::uint32_t leadingHexNumber(QStringView text) {
  const auto* const end = std::find_if_not(text.begin(), text.end(), isHexDigit);
  return text.first(end - text.begin()).toUInt(nullptr, 16);
}

}  // namespace

QColor fromHex(std::uint32_t hex, double alpha) {
  QColor color(static_cast<int>((hex >> 16) & 0xFF), static_cast<int>((hex >> 8) & 0xFF),
               static_cast<int>(hex & 0xFF));
  color.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
  return color;
}

QColor fromHexString(const QString& hexString) {
  const QStringView digits = trimmed(hexString);
  return fromHex(digits.size() == 6 ? leadingHexNumber(digits) : fallback);
}

}  // namespace korvantis::Color
