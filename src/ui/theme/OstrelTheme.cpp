#include "ui/theme/OstrelTheme.h"

#include <cstdint>

#include "ui/theme/ColorHelpers.h"

namespace korvantis {

namespace {

bool isDarkNow = true;

QColor byTheme(std::uint32_t dark, std::uint32_t light) {
  return Color::fromHex(isDarkNow ? dark : light);
}

}  // namespace

bool OstrelTheme::isDark() {
  return isDarkNow;
}
void OstrelTheme::setIsDark(bool isDark) {
  isDarkNow = isDark;
}

QColor OstrelTheme::canvas() {
  return byTheme(0x131315, 0xF3F4F8);
}
QColor OstrelTheme::cardBackground() {
  return byTheme(0x17171B, 0xFFFFFF);
}
QColor OstrelTheme::elevatedCard() {
  return byTheme(0x1D1D22, 0xE8EAF0);
}
QColor OstrelTheme::rowHover() {
  return byTheme(0x202026, 0xE1E5EE);
}
QColor OstrelTheme::hairline() {
  return byTheme(0x222228, 0xDCE0EA);
}
QColor OstrelTheme::subtleBorder() {
  return byTheme(0x2A2A32, 0xCBD1DF);
}
QColor OstrelTheme::ink1() {
  return byTheme(0xFFFFFF, 0x12141A);
}
QColor OstrelTheme::ink2() {
  return byTheme(0xB4B4BD, 0x3D4350);
}
QColor OstrelTheme::ink3() {
  return byTheme(0x7C8391, 0x687082);
}
QColor OstrelTheme::ink4() {
  return byTheme(0x525662, 0x8F97A8);
}

QColor OstrelTheme::cpu() {
  return Color::fromHex(0x0A84FF);
}
QColor OstrelTheme::memory() {
  return Color::fromHex(0x8A63F5);
}
QColor OstrelTheme::gpu() {
  return Color::fromHex(0x20808D);
}
QColor OstrelTheme::neural() {
  return Color::fromHex(0xEC4899);
}
QColor OstrelTheme::disk() {
  return Color::fromHex(0xF5A524);
}
QColor OstrelTheme::network() {
  return Color::fromHex(0x2B9CF2);
}
QColor OstrelTheme::battery() {
  return Color::fromHex(0x17B26A);
}
QColor OstrelTheme::heat() {
  return Color::fromHex(0xFF6C37);
}
QColor OstrelTheme::strainRed() {
  return Color::fromHex(0xFA3A55);
}
QColor OstrelTheme::amberWarning() {
  return disk();
}
QColor OstrelTheme::safeGreen() {
  return battery();
}

}  // namespace korvantis
