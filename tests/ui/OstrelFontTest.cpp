#include <QFontMetricsF>
#include <QString>
#include <gtest/gtest.h>

#include "ui/theme/OstrelFont.h"

namespace korvantis {
namespace {

TEST(OstrelFont, SizesBecomePointsByTheDotsOfTheScreen) {
  EXPECT_DOUBLE_EQ(OstrelFont::pointSize(12, 96), 9);
  EXPECT_DOUBLE_EQ(OstrelFont::pointSize(12.5, 96), 9.375);
  EXPECT_DOUBLE_EQ(OstrelFont::pointSize(12.5, 72), 12.5);
}

TEST(OstrelFont, FractionalSizesStayFractional) {
  EXPECT_DOUBLE_EQ(OstrelFont::system(12.5).pointSizeF(), 9.375);
  EXPECT_DOUBLE_EQ(OstrelFont::monospaced(9.5).pointSizeF(), 7.125);
}

TEST(OstrelFont, CarriesWeightAndTracking) {
  const QFont font = OstrelFont::rounded(11, QFont::Bold, 0.6);
  EXPECT_EQ(font.weight(), QFont::Bold);
  // Kept in steps of a 64th.
  EXPECT_NEAR(font.letterSpacing(), 0.6, 1.0 / 64);
  EXPECT_DOUBLE_EQ(OstrelFont::system(11).letterSpacing(), 0);
}

TEST(OstrelFont, DigitsOfTheMonospacedFaceAreEquallyWide) {
  const QFontMetricsF metrics(OstrelFont::monospaced(11.5));
  const double width = metrics.horizontalAdvance(QStringLiteral("0"));
  for (const QChar digit : QStringLiteral("123456789.")) {
    EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(digit), width);
  }
}

}  // namespace
}  // namespace korvantis
