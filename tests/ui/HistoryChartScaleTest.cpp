#include <gtest/gtest.h>
#include <limits>

#include "ui/panes/HistoryChartScale.h"

namespace korvantis {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

HistoryChartScale scaleUpTo(double peak) {
  return historyChartScale({{1000, 0, 0}, {2000, 0, peak}}, 100);
}

TEST(HistoryChartScale, EndsAtARoundValueThatHoldsTheHighestPeak) {
  struct Case {
    double peak;
    double top;
    double step;
  };
  for (const Case& each :
       {Case{98, 100, 25}, Case{100, 100, 25}, Case{100.5, 150, 50}, Case{47.5, 60, 20},
        Case{7, 8, 2}, Case{0.3, 0.3, 0.1}, Case{2400, 3000, 1000}, Case{1e21, 1e21, 2.5e20}}) {
    const HistoryChartScale scale = scaleUpTo(each.peak);
    EXPECT_DOUBLE_EQ(scale.top, each.top) << each.peak;
    EXPECT_DOUBLE_EQ(scale.step, each.step) << each.peak;
    EXPECT_EQ(scale.bottom, 0) << each.peak;
  }
}

TEST(HistoryChartScale, HoldsAnAverageAboveEveryPeak) {
  EXPECT_EQ(historyChartScale({{0, 90, 10}, {1, 5, 10}}, 100).top, 100);
}

TEST(HistoryChartScale, WithNothingAbove0ItEndsAtTheRestingTop) {
  EXPECT_EQ(scaleUpTo(0).top, 100);
  EXPECT_EQ(historyChartScale({}, 2000).top, 2000);
  EXPECT_FALSE(historyChartScale({}, 2000).hasTimes());
  for (const double nothing : {0.0, -5.0, none}) {
    EXPECT_GT(historyChartScale({}, nothing).top, 0) << nothing;
    EXPECT_GT(historyChartScale({}, nothing).step, 0) << nothing;
  }
}

TEST(HistoryChartScale, ReachesBelow0ForNegativeValues) {
  const HistoryChartScale scale = historyChartScale({{0, -12, 20}, {1, 0, 20}}, 100);
  EXPECT_EQ(scale.step, 10);
  EXPECT_EQ(scale.bottom, -20);
  EXPECT_EQ(scale.top, 20);
  EXPECT_EQ(scale.shareOfValue(0), 0.5);
}

TEST(HistoryChartScale, RunsFromTheFirstTimeToTheLastInWhateverOrderTheyCome) {
  const HistoryChartScale scale = historyChartScale({{500, 1, 1}, {100, 1, 1}, {300, 1, 1}}, 100);
  EXPECT_EQ(scale.firstTime, 100);
  EXPECT_EQ(scale.lastTime, 500);
  EXPECT_EQ(scale.shareOfTime(300), 0.5);
}

TEST(HistoryChartScale, ALoneRowStandsInTheMiddle) {
  const HistoryChartScale scale = historyChartScale({{5000, 1, 1}}, 100);
  EXPECT_TRUE(scale.hasTimes());
  EXPECT_EQ(scale.shareOfTime(5000), 0.5);
}

TEST(HistoryChartScale, WhatIsNoNumberOrTooLargeIsLeftOut) {
  const HistoryChartScale scale = historyChartScale(
      {{100, 1, infinite}, {none, 1, 1}, {infinite, 2, 1e200}, {300, none, 50}}, 100);
  EXPECT_EQ(scale.firstTime, 100);
  EXPECT_EQ(scale.lastTime, 300);
  EXPECT_EQ(scale.top, 60);
  EXPECT_FALSE(isDrawable(none));
  EXPECT_FALSE(isDrawable(-infinite));
  EXPECT_FALSE(isDrawable(1e100));
  EXPECT_TRUE(isDrawable(1e99));
}

}  // namespace
}  // namespace korvantis
