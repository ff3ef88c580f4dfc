#include <gtest/gtest.h>

#include "ui/PopoverPlacement.h"

namespace korvantis {
namespace {

constexpr QSize panel(820, 560);

/// A screen with a bar of 30 pixels at its top.
constexpr QRect room(0, 30, 1920, 1050);

TEST(PopoverPlacement, OpensBelowTheItemCentredUnderIt) {
  EXPECT_EQ(popoverPosition(QPoint(1000, 15), room, panel), QPoint(590, 36));
  EXPECT_EQ(popoverPosition(QPoint(1000, 40), room, panel), QPoint(590, 46));
}

TEST(PopoverPlacement, StaysOnTheScreen) {
  EXPECT_EQ(popoverPosition(QPoint(1900, 15), room, panel), QPoint(1920 - 820 - 6, 36));
  EXPECT_EQ(popoverPosition(QPoint(3, 15), room, panel), QPoint(6, 36));
}

TEST(PopoverPlacement, OpensAboveAnItemAtTheBottom) {
  const QRect above(0, 0, 1920, 1040);
  EXPECT_EQ(popoverPosition(QPoint(1000, 1060), above, panel), QPoint(590, 1040 - 560 - 6));
}

TEST(PopoverPlacement, OpensAtTheTopRightWhereTheDesktopDoesNotTellTheClick) {
  EXPECT_EQ(popoverPosition(std::nullopt, room, panel), QPoint(1920 - 820 - 6, 36));
  EXPECT_EQ(popoverPosition(std::nullopt, QRect(1920, 0, 1280, 1024), panel),
            QPoint(3200 - 820 - 6, 6));
}

TEST(PopoverPlacement, OnAScreenThatIsTooSmallItsTopLeftStaysInSight) {
  EXPECT_EQ(popoverPosition(QPoint(300, 10), QRect(0, 0, 640, 480), panel), QPoint(6, 6));
}

}  // namespace
}  // namespace korvantis
