#include <gtest/gtest.h>

#include "ui/theme/OstrelTheme.h"
#include "ui/views/QuitSafetyBadge.h"

namespace korvantis {
namespace {

QColor withOpacity(QColor color, float opacity) {
  color.setAlphaF(opacity);
  return color;
}

TEST(QuitSafetyBadge, SafeIsGreen) {
  EXPECT_EQ(QuitSafetyBadge::text("safe"), QStringLiteral("Safe to quit"));
  EXPECT_EQ(QuitSafetyBadge::ink("safe"), OstrelTheme::safeGreen());
  EXPECT_EQ(QuitSafetyBadge::ground("safe"), withOpacity(OstrelTheme::safeGreen(), 0.16F));
}

TEST(QuitSafetyBadge, AskFirstIsAmber) {
  EXPECT_EQ(QuitSafetyBadge::text("ask_first"), QStringLiteral("Ask first"));
  EXPECT_EQ(QuitSafetyBadge::ink("ask_first"), OstrelTheme::amberWarning());
  EXPECT_EQ(QuitSafetyBadge::ground("ask_first"), withOpacity(OstrelTheme::amberWarning(), 0.16F));
}

TEST(QuitSafetyBadge, DoNotIsQuietGreyAndNoAlarm) {
  for (const bool isDark : {true, false}) {
    OstrelTheme::setIsDark(isDark);
    EXPECT_EQ(QuitSafetyBadge::text("do_not"), QStringLiteral("Don't quit"));
    EXPECT_EQ(QuitSafetyBadge::ink("do_not"), OstrelTheme::ink3());
    EXPECT_EQ(QuitSafetyBadge::ground("do_not"), withOpacity(OstrelTheme::ink4(), 0.25F));
  }
  OstrelTheme::setIsDark(true);
}

TEST(QuitSafetyBadge, AnUnknownVerdictHasNoWords) {
  EXPECT_EQ(QuitSafetyBadge::text("perhaps"), QString());
}

}  // namespace
}  // namespace korvantis
