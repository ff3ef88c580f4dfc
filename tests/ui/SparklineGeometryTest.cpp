#include <gtest/gtest.h>
#include <limits>

#include "ui/views/SparklineGeometry.h"

namespace korvantis {
namespace {

using Points = QList<QPointF>;

TEST(Sparkline, AllZerosWithoutAMaximumLieOnTheBottomEdge) {
  EXPECT_EQ(sparklinePoints({0, 0, 0}, std::nullopt, 100, 38),
            (Points{{0, 38}, {50, 38}, {100, 38}}));
}

TEST(Sparkline, TheScaleOfSmallFiguresIsOne) {
  EXPECT_EQ(sparklinePoints({0.5, 0.25}, std::nullopt, 10, 40), (Points{{0, 20}, {10, 30}}));
  EXPECT_EQ(sparklinePoints({0.5}, 0.1, 10, 40), (Points{{0, 20}}));
  EXPECT_EQ(sparklinePoints({1, 0}, std::nullopt, 10, 40), (Points{{0, 0}, {10, 40}}));
}

TEST(Sparkline, AValueAboveTheMaximumTouchesTheTopEdgeAndDoesNotLeaveTheView) {
  EXPECT_EQ(sparklinePoints({150, 50}, 100, 60, 38), (Points{{0, 0}, {60, 19}}));
}

TEST(Sparkline, ANegativeValueLiesOnTheBottomEdge) {
  EXPECT_EQ(sparklinePoints({-5, 50}, 100, 60, 38), (Points{{0, 38}, {60, 19}}));
}

TEST(Sparkline, WithoutAMaximumTheLargestValueIsTheTop) {
  EXPECT_EQ(sparklinePoints({10, 40, 20}, std::nullopt, 60, 40),
            (Points{{0, 30}, {30, 0}, {60, 20}}));
}

TEST(Sparkline, ASingleValueStandsAtTheLeftEdge) {
  EXPECT_EQ(sparklinePoints({50}, 100, 60, 38), (Points{{0, 19}}));
}

TEST(Sparkline, AnEmptyListHasNoPoints) {
  EXPECT_TRUE(sparklinePoints({}, std::nullopt, 60, 38).isEmpty());
}

TEST(Sparkline, WhatIsNoNumberStaysInTheView) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(sparklinePoints({none, 50}, 100, 60, 38), (Points{{0, 38}, {60, 19}}));
  EXPECT_EQ(sparklinePoints({infinite, 50}, 100, 60, 38), (Points{{0, 0}, {60, 19}}));
  EXPECT_EQ(sparklinePoints({0.5}, none, 60, 38), (Points{{0, 19}}));
}

}  // namespace
}  // namespace korvantis
