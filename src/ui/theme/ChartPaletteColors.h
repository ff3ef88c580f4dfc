#pragma once

#include <QColor>

#include "state/ChartPalette.h"
#include "ui/theme/ColorHelpers.h"

namespace korvantis {

/// The first colour of a palette. No chart reads it: charts use the accent colours.
inline QColor primaryColor(ChartPalette palette) {
  switch (palette) {
    case ChartPalette::forest: return Color::fromHex(0x30D158);
    case ChartPalette::ember: return Color::fromHex(0xFF6C37);
    case ChartPalette::ocean: return Color::fromHex(0x0A84FF);
    case ChartPalette::iris: return Color::fromHex(0x8A63F5);
    case ChartPalette::mono: return Color::fromHex(0xE5E5EA);
  }
  return {};
}

/// The second colour of a palette. No chart reads it either.
inline QColor secondaryColor(ChartPalette palette) {
  switch (palette) {
    case ChartPalette::forest: return Color::fromHex(0x20808D);
    case ChartPalette::ember: return Color::fromHex(0xF5A524);
    case ChartPalette::ocean: return Color::fromHex(0x2B9CF2);
    case ChartPalette::iris: return Color::fromHex(0xEC4899);
    case ChartPalette::mono: return Color::fromHex(0x8E8E93);
  }
  return {};
}

}  // namespace korvantis
