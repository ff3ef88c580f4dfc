#include <QColor>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPalette>
#include <gtest/gtest.h>

#include "platform/qt/QtAppearance.h"

namespace korvantis {
namespace {

/// Gives the application a palette for the length of a test.
class QtAppearance : public ::testing::Test {
 protected:
  ~QtAppearance() override { QGuiApplication::setPalette(before); }

  static void setColors(const QColor& window, const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    QGuiApplication::setPalette(palette);
    QCoreApplication::processEvents();
  }

  QPalette before = QGuiApplication::palette();
};

TEST_F(QtAppearance, IsDarkWhenAWindowIsDarkerThanItsText) {
  setColors(QColor(40, 40, 40), QColor(250, 250, 250));
  EXPECT_TRUE(qtPaletteAppearanceCalls().detectSystemDarkMode());

  setColors(QColor(240, 240, 240), QColor(20, 20, 20));
  EXPECT_FALSE(qtPaletteAppearanceCalls().detectSystemDarkMode());

  setColors(QColor(128, 128, 128), QColor(128, 128, 128));
  EXPECT_FALSE(qtPaletteAppearanceCalls().detectSystemDarkMode());
}

TEST_F(QtAppearance, AChangeOfColoursIsTold) {
  setColors(QColor(240, 240, 240), QColor(20, 20, 20));
  // The listener lives as long as the application, so it must not hold a local.
  static int told = 0;
  static bool lastLook = false;
  observeQtPalette([] {
    ++told;
    lastLook = qtPaletteAppearanceCalls().detectSystemDarkMode();
  });
  EXPECT_EQ(told, 0);
  setColors(QColor(40, 40, 40), QColor(250, 250, 250));

  EXPECT_GE(told, 1);
  EXPECT_TRUE(lastLook);
}

}  // namespace
}  // namespace korvantis
