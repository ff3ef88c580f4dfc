#pragma once

#include <QColor>
#include <QString>
#include <cstdint>

/// Colours from numbers and from text. Any thread.
namespace korvantis::Color {

/// The colour of a 24-bit number, red in the highest byte; `alpha` is its opacity, 0 to 1.
QColor fromHex(std::uint32_t hex, double alpha = 1.0);

/// The colour of six hexadecimal digits, whatever stands around them that is no letter or digit,
/// such as "#20808D". Any text that is not six characters long after that gives #0A84FF. Reading
/// stops at the first character that is no hexadecimal digit.
QColor fromHexString(const QString& hexString);

}  // namespace korvantis::Color
