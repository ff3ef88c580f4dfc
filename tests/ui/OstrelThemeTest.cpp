#include <QVariant>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "ui/theme/ChartPaletteColors.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {
namespace {

struct ThemedColour {
  const char* name;
  QColor (*colour)();
  QRgb dark;
  QRgb light;
};

const std::array surfacesAndTexts{
    ThemedColour{"canvas", OstrelTheme::canvas, 0xFF131315, 0xFFF3F4F8},
    ThemedColour{"cardBackground", OstrelTheme::cardBackground, 0xFF17171B, 0xFFFFFFFF},
    ThemedColour{"elevatedCard", OstrelTheme::elevatedCard, 0xFF1D1D22, 0xFFE8EAF0},
    ThemedColour{"rowHover", OstrelTheme::rowHover, 0xFF202026, 0xFFE1E5EE},
    ThemedColour{"hairline", OstrelTheme::hairline, 0xFF222228, 0xFFDCE0EA},
    ThemedColour{"subtleBorder", OstrelTheme::subtleBorder, 0xFF2A2A32, 0xFFCBD1DF},
    ThemedColour{"ink1", OstrelTheme::ink1, 0xFFFFFFFF, 0xFF12141A},
    ThemedColour{"ink2", OstrelTheme::ink2, 0xFFB4B4BD, 0xFF3D4350},
    ThemedColour{"ink3", OstrelTheme::ink3, 0xFF7C8391, 0xFF687082},
    ThemedColour{"ink4", OstrelTheme::ink4, 0xFF525662, 0xFF8F97A8}};

const std::array accents{
    ThemedColour{"cpu", OstrelTheme::cpu, 0xFF0A84FF, 0xFF0A84FF},
    ThemedColour{"memory", OstrelTheme::memory, 0xFF8A63F5, 0xFF8A63F5},
    ThemedColour{"gpu", OstrelTheme::gpu, 0xFF20808D, 0xFF20808D},
    ThemedColour{"neural", OstrelTheme::neural, 0xFFEC4899, 0xFFEC4899},
    ThemedColour{"disk", OstrelTheme::disk, 0xFFF5A524, 0xFFF5A524},
    ThemedColour{"network", OstrelTheme::network, 0xFF2B9CF2, 0xFF2B9CF2},
    ThemedColour{"battery", OstrelTheme::battery, 0xFF17B26A, 0xFF17B26A},
    ThemedColour{"heat", OstrelTheme::heat, 0xFFFF6C37, 0xFFFF6C37},
    ThemedColour{"strainRed", OstrelTheme::strainRed, 0xFFFA3A55, 0xFFFA3A55},
    ThemedColour{"amberWarning", OstrelTheme::amberWarning, 0xFFF5A524, 0xFFF5A524},
    ThemedColour{"safeGreen", OstrelTheme::safeGreen, 0xFF17B26A, 0xFF17B26A}};

class OstrelThemeTables : public testing::Test {
 protected:
  ~OstrelThemeTables() override { OstrelTheme::setIsDark(true); }
};

template <typename Table>
void expectTable(const Table& table) {
  for (const ThemedColour& row : table) {
    OstrelTheme::setIsDark(true);
    EXPECT_EQ(row.colour().rgba(), row.dark) << row.name << " in the dark theme";
    OstrelTheme::setIsDark(false);
    EXPECT_EQ(row.colour().rgba(), row.light) << row.name << " in the light theme";
  }
}

TEST_F(OstrelThemeTables, StartsDark) {
  EXPECT_TRUE(OstrelTheme::isDark());
}

TEST_F(OstrelThemeTables, SurfacesAndTextsFollowTheFlagAtEachAccess) {
  expectTable(surfacesAndTexts);
}

TEST_F(OstrelThemeTables, AccentsAreTheSameInBothThemes) {
  expectTable(accents);
}

TEST_F(OstrelThemeTables, WarningIsDiskAndAllClearIsBattery) {
  EXPECT_EQ(OstrelTheme::amberWarning(), OstrelTheme::disk());
  EXPECT_EQ(OstrelTheme::safeGreen(), OstrelTheme::battery());
}

TEST_F(OstrelThemeTables, QMLReadsTheSameColours) {
  const OstrelTheme theme;
  for (const auto& table : {std::vector(surfacesAndTexts.begin(), surfacesAndTexts.end()),
                            std::vector(accents.begin(), accents.end())}) {
    for (const ThemedColour& row : table) {
      OstrelTheme::setIsDark(false);
      EXPECT_EQ(theme.property(row.name).value<QColor>().rgba(), row.light) << row.name;
    }
  }
}

TEST_F(OstrelThemeTables, PalettesHaveTwoColoursEach) {
  struct Row {
    ChartPalette palette;
    QRgb primary;
    QRgb secondary;
  };
  for (const Row& row : {Row{ChartPalette::forest, 0xFF30D158, 0xFF20808D},
                         Row{ChartPalette::ember, 0xFFFF6C37, 0xFFF5A524},
                         Row{ChartPalette::ocean, 0xFF0A84FF, 0xFF2B9CF2},
                         Row{ChartPalette::iris, 0xFF8A63F5, 0xFFEC4899},
                         Row{ChartPalette::mono, 0xFFE5E5EA, 0xFF8E8E93}}) {
    EXPECT_EQ(primaryColor(row.palette).rgba(), row.primary);
    EXPECT_EQ(secondaryColor(row.palette).rgba(), row.secondary);
  }
}

}  // namespace
}  // namespace korvantis
