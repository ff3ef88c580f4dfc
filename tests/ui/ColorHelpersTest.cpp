#include <gtest/gtest.h>

#include "ui/theme/ColorHelpers.h"

namespace korvantis {
namespace {

const QColor fallback(10, 132, 255);

TEST(ColorHelpers, HexIsThreeBytesRedFirst) {
  EXPECT_EQ(Color::fromHex(0x20808D), QColor(0x20, 0x80, 0x8D));
  EXPECT_EQ(Color::fromHex(0x000000), QColor(0, 0, 0));
  EXPECT_EQ(Color::fromHex(0xFFFFFF), QColor(255, 255, 255));
}

TEST(ColorHelpers, HexTakesAnOpacityAndIsOpaqueWithoutOne) {
  EXPECT_EQ(Color::fromHex(0x0A84FF).alpha(), 255);
  EXPECT_NEAR(Color::fromHex(0x0A84FF, 0.25).alphaF(), 0.25, 0.001);
}

TEST(ColorHelpers, HexStringOfSixDigitsGivesThatColour) {
  EXPECT_EQ(Color::fromHexString(QStringLiteral("#20808D")), QColor(0x20, 0x80, 0x8D));
  EXPECT_EQ(Color::fromHexString(QStringLiteral("20808d")), QColor(0x20, 0x80, 0x8D));
}

TEST(ColorHelpers, HexStringThatIsTooShortGivesTheBlueStandIn) {
  EXPECT_EQ(Color::fromHexString(QStringLiteral("#FFF")), fallback);
  EXPECT_EQ(Color::fromHexString(QString()), fallback);
  EXPECT_EQ(Color::fromHexString(QStringLiteral("#")), fallback);
}

TEST(ColorHelpers, HexStringThatIsTooLongGivesTheBlueStandIn) {
  EXPECT_EQ(Color::fromHexString(QStringLiteral("#20808DFF")), fallback);
}

TEST(ColorHelpers, HexStringIsTrimmedOfAllButLettersAndDigitsAtBothEnds) {
  EXPECT_EQ(Color::fromHexString(QStringLiteral("  (#20808D), ")), QColor(0x20, 0x80, 0x8D));
  EXPECT_EQ(Color::fromHexString(QStringLiteral("20 808D")), fallback);
}

TEST(ColorHelpers, HexStringIsReadUpToTheFirstCharacterThatIsNoHexadecimalDigit) {
  EXPECT_EQ(Color::fromHexString(QStringLiteral("#12zz56")), QColor(0, 0, 0x12));
  EXPECT_EQ(Color::fromHexString(QStringLiteral("zzzzzz")), QColor(0, 0, 0));
}

}  // namespace
}  // namespace korvantis
