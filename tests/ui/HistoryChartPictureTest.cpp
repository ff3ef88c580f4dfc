#include <QColor>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "ui/panes/HistoryChartColumns.h"
#include "ui/panes/HistoryChartCoverage.h"
#include "ui/panes/HistoryChartPicture.h"

namespace korvantis {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr int margin = static_cast<int>(HistoryChartPicture::margin);

using Line = std::vector<PixelPoint>;

TEST(HistoryChartColumns, ABandHoldsAllPointsOfItsColumn) {
  const auto bands = columnBands(Line{{2.1F, 5}, {2.2F, 9}, {2.9F, 1}, {2.95F, 4}}, 4);
  EXPECT_EQ(bands[2].upper, 1);
  EXPECT_EQ(bands[2].lower, 9);
  EXPECT_TRUE(bands[0].isEmpty());
  EXPECT_TRUE(bands[3].isEmpty());
}

TEST(HistoryChartColumns, ALineFillsTheColumnsBetweenItsPoints) {
  const auto bands = columnBands(Line{{0, 0}, {4, 8}}, 5);
  EXPECT_EQ(bands[0].upper, 0);
  EXPECT_EQ(bands[0].lower, 2);
  EXPECT_EQ(bands[2].upper, 4);
  EXPECT_EQ(bands[2].lower, 6);
  EXPECT_EQ(bands[4].lower, 8);
}

TEST(HistoryChartColumns, TheSameLineBackwardsGivesTheSameBands) {
  const Line line{{0.5F, 3}, {2.5F, 7}, {3.25F, 1}, {6, 6}};
  const auto forwards = columnBands(line, 6);
  const auto backwards = columnBands(Line(line.rbegin(), line.rend()), 6);
  for (std::size_t column = 0; column < forwards.size(); ++column) {
    EXPECT_FLOAT_EQ(forwards[column].upper, backwards[column].upper) << column;
    EXPECT_FLOAT_EQ(forwards[column].lower, backwards[column].lower) << column;
  }
}

TEST(HistoryChartColumns, PointsOutsideCountForTheOutermostColumns) {
  const auto bands = columnBands(Line{{-1e9F, 1}, {1e9F, 3}}, 3);
  EXPECT_EQ(bands.front().upper, 1);
  EXPECT_EQ(bands.back().lower, 3);
  EXPECT_TRUE(columnBands(Line{{1, 1}}, 0).empty());
}

HistoryChartCoverage drawn(const Line& line, float lineWidth, int width = 20, int height = 20) {
  HistoryChartCoverage coverage(width, height);
  coverage.drawLine(line, columnBands(line, width), lineWidth);
  return coverage;
}

/// How many pixels' worth of line one column holds.
double amountIn(const HistoryChartCoverage& coverage, int column) {
  double sum = 0;
  for (const std::uint8_t pixel : coverage.column(column)) sum += pixel;
  return sum / 255;
}

/// How many pixels' worth of line one row holds.
double amountAcross(const HistoryChartCoverage& coverage, int row) {
  double sum = 0;
  for (int column = 0; column < coverage.width(); ++column) {
    sum += coverage.column(column)[static_cast<std::size_t>(row)];
  }
  return sum / 255;
}

/// The same line through so many points that it is drawn as bands.
Line manyPoints(PixelPoint from, PixelPoint to, int count) {
  Line line;
  for (int index = 0; index <= count; ++index) {
    const float share = static_cast<float>(index) / static_cast<float>(count);
    line.push_back({from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)});
  }
  return line;
}

TEST(HistoryChartCoverage, ALevelLineIsAsWideAsAsked) {
  for (const float lineWidth : {1.0F, 2.0F, 4.0F}) {
    const auto few = drawn({{0, 10}, {20, 10}}, lineWidth);
    const auto many = drawn(manyPoints({0, 10}, {20, 10}, 200), lineWidth);
    for (int column = 3; column < 17; ++column) {
      EXPECT_NEAR(amountIn(few, column), lineWidth, 0.02) << column;
      EXPECT_NEAR(amountIn(many, column), lineWidth, 0.02) << column;
    }
  }
}

TEST(HistoryChartCoverage, AnUprightLineIsAsWideAsAsked) {
  for (const float lineWidth : {1.0F, 2.0F, 4.0F}) {
    const auto few = drawn({{10.5F, 0}, {10.5F, 20}}, lineWidth);
    const auto many = drawn(manyPoints({10.5F, 0}, {10.5F, 20}, 200), lineWidth);
    EXPECT_NEAR(amountAcross(few, 10), lineWidth, 0.02);
    EXPECT_NEAR(amountAcross(many, 10), lineWidth, 0.02);
  }
}

TEST(HistoryChartCoverage, ASlantedLineIsAsWideAcrossItAsAsked) {
  const auto coverage = drawn({{0, 2}, {20, 17}}, 2);
  // Straight up it is longer by the slope of 3 in 4: 2 / cos.
  EXPECT_NEAR(amountIn(coverage, 10), 2.5, 0.15);
}

TEST(HistoryChartCoverage, WhatIsDrawnTwiceIsNotCoveredTwice) {
  const Line line{{0, 10.25F}, {20, 10.25F}};
  Line thrice = line;
  thrice.insert(thrice.end(), {{0, 10.25F}, {20, 10.25F}});
  const auto once = drawn(line, 1);
  const auto again = drawn(thrice, 1);
  for (int column = 0; column < 20; ++column) {
    EXPECT_TRUE(std::ranges::equal(once.column(column), again.column(column))) << column;
  }
}

TEST(HistoryChartCoverage, ALonePointIsADot) {
  const auto coverage = drawn({{10, 10}}, 2);
  EXPECT_EQ(coverage.column(10)[10], 255);
  EXPECT_EQ(coverage.column(10)[16], 0);
  EXPECT_EQ(coverage.column(16)[10], 0);
}

TEST(HistoryChartCoverage, WhatLiesOutsideIsCutOff) {
  const auto coverage = drawn({{-5000, -5000}, {5000, 5000}, {10, 1e20F}, {-1e20F, 10}}, 2);
  EXPECT_EQ(coverage.column(10)[10], 255);
  const auto many = drawn(manyPoints({-100, -300}, {100, 300}, 500), 2);
  EXPECT_GT(amountIn(many, 3), 2);
  EXPECT_EQ(drawn({{1, 1}, {2, 2}}, 1, 0, 0).width(), 0);
}

QList<HistoryPoint> level(int count, double avg, double peak) {
  QList<HistoryPoint> points;
  for (int index = 0; index < count; ++index) points.append({300.0 * index, avg, peak});
  return points;
}

HistoryChartPicture pictureOf(const QList<HistoryPoint>& points, double pixelRatio = 1) {
  return {historyChartScale(points, 100), QColor(10, 132, 255), 200, 100, pixelRatio};
}

double opacityAt(const QImage& image, int x, int y) {
  return image.pixelColor(x, y).alphaF();
}

TEST(HistoryChartPicture, HasItsSizeInPixelsAndKnowsItsRatio) {
  for (const double ratio : {1.0, 1.5, 2.0}) {
    const QImage image = pictureOf(level(5, 1, 2), ratio).draw(level(5, 1, 2));
    EXPECT_EQ(image.size(), QSize(static_cast<int>(204 * ratio), static_cast<int>(104 * ratio)));
    EXPECT_EQ(image.devicePixelRatio(), ratio);
  }
}

TEST(HistoryChartPicture, TheAverageIsASolidLineTwoWide) {
  for (const int ratio : {1, 2}) {
    const auto points = level(5, 50, 100);
    const QImage image = pictureOf(points, ratio).draw(points);
    const int y = (margin + 50) * ratio;
    const int x = image.width() / 2;
    for (int row = y - ratio; row < y + ratio; ++row) EXPECT_EQ(opacityAt(image, x, row), 1);
    EXPECT_EQ(opacityAt(image, x, y - ratio - 2), 0);
    EXPECT_LT(opacityAt(image, x, y + ratio + 1), 0.4);
    EXPECT_EQ(image.pixelColor(x, y), QColor(10, 132, 255));
  }
}

TEST(HistoryChartPicture, ThePeakIsAFaintLineOneWide) {
  const auto points = level(5, 0, 50);
  const QImage image = pictureOf(points).draw(points);
  // The scale ends at 60, so the line lies between two rows and each shows half of it.
  const auto line = historyChartScale(points, 100).shareOfValue(50) * 100 + margin;
  double sum = 0;
  for (int row = 0; row < 60; ++row) sum += opacityAt(image, 100, row);
  EXPECT_NEAR(sum, 0.45, 0.01);
  EXPECT_GT(opacityAt(image, 100, static_cast<int>(line)), 0);
}

TEST(HistoryChartPicture, ThePeakLineIsAsFaintWhereItCrossesItself) {
  QList<HistoryPoint> points;
  for (int index = 0; index < 5000; ++index) {
    points.append({static_cast<double>(index), 0, index % 2 == 0 ? 20.0 : 100.0});
  }
  const QImage image = pictureOf(points).draw(points);
  EXPECT_NEAR(opacityAt(image, 100, margin + 40), 0.45, 0.01);
}

TEST(HistoryChartPicture, TheGroundFadesFromTheTopOfTheAveragesTo0) {
  const auto points = level(5, 100, 100);
  const QImage image = pictureOf(points).draw(points);
  EXPECT_NEAR(opacityAt(image, 100, margin + 3), 0.35, 0.02);
  EXPECT_NEAR(opacityAt(image, 100, margin + 50), (0.35 + 0.02) / 2, 0.01);
  EXPECT_NEAR(opacityAt(image, 100, margin + 99), 0.02, 0.01);
  EXPECT_EQ(opacityAt(image, 100, margin + 101), 0);
}

/// The peaks of a level history of which one row is a spike up to the top.
QList<HistoryPoint> oneSpike(int count, int at) {
  QList<HistoryPoint> points = level(count, 10, 10);
  points[at] = {300.0 * at, 100, 100};
  return points;
}

TEST(HistoryChartPicture, NoSpikeOfOneRowIsLost) {
  for (const int count : {3, 150, 399, 401, 1000, 100'000}) {
    for (const int at : {0, count / 3, count / 2, count - 2, count - 1}) {
      const auto points = oneSpike(count, at);
      const QImage image = pictureOf(points).draw(points);
      const double share = points[at].date / points.last().date;
      const int x = std::min(margin + static_cast<int>(share * 200), margin + 199);
      double most = 0;
      for (int near = x - 1; near <= x + 1; ++near) {
        most = std::max(most, opacityAt(image, near, margin + 2));
      }
      EXPECT_GT(most, 0.7) << count << " rows, spike at " << at;
    }
  }
}

TEST(HistoryChartPicture, ManyRowsLookLikeFewWithTheSameCurve) {
  const auto wave = [](int count) {
    QList<HistoryPoint> points;
    for (int index = 0; index <= count; ++index) {
      const double share = static_cast<double>(index) / count;
      points.append({share * 1e6, 50 + 40 * std::sin(share * 12), 100});
    }
    return points;
  };
  const QImage few = pictureOf(wave(300)).draw(wave(300));
  const QImage many = pictureOf(wave(30'000)).draw(wave(30'000));
  double difference = 0;
  for (int y = 0; y < few.height(); ++y) {
    for (int x = 0; x < few.width(); ++x) {
      difference += std::abs(opacityAt(few, x, y) - opacityAt(many, x, y));
    }
  }
  // Along two lines of 200, a few hundredths for each pixel of their edges.
  EXPECT_LT(difference / 200, 0.5);
}

TEST(HistoryChartPicture, RowsThatAreNoNumbersAreLeftOut) {
  const QList<HistoryPoint> sound{{0, 20, 40}, {300, 60, 80}, {600, 30, 50}};
  QList<HistoryPoint> broken = sound;
  broken.insert(1, {none, 10, 10});
  broken.insert(2, {infinite, 10, 10});
  broken.insert(3, {-1e300, none, none});
  broken.append({450, none, -infinite});
  EXPECT_EQ(pictureOf(broken).draw(broken), pictureOf(sound).draw(sound));
}

TEST(HistoryChartPicture, TimesOutOfOrderAreDrawnInTheOrderOfTheirRows) {
  const QList<HistoryPoint> points{{600, 10, 10}, {0, 90, 90}, {300, 50, 100}, {0, 20, 20}};
  const QImage image = pictureOf(points).draw(points);
  QList<HistoryPoint> backwards(points.rbegin(), points.rend());
  EXPECT_EQ(image, pictureOf(points).draw(backwards));
  EXPECT_GT(opacityAt(image, margin + 99, margin + 48), 0);
}

TEST(HistoryChartPicture, WithoutRowsItIsEmptyAndALoneRowIsADot) {
  const QImage empty = pictureOf({}).draw({});
  ASSERT_FALSE(empty.isNull());
  for (int x = 0; x < empty.width(); ++x) EXPECT_EQ(opacityAt(empty, x, 50), 0);
  const QImage lone = pictureOf({{900, 50, 100}}).draw({{900, 50, 100}});
  EXPECT_EQ(opacityAt(lone, margin + 100, margin + 50), 1);
  EXPECT_EQ(opacityAt(lone, margin + 90, margin + 50), 0);
}

TEST(HistoryChartPicture, WithoutRoomThereIsNone) {
  const auto points = level(3, 1, 2);
  const HistoryChartScale scale = historyChartScale(points, 100);
  EXPECT_TRUE((HistoryChartPicture{scale, Qt::red, 0, 100, 1}).draw(points).isNull());
  EXPECT_TRUE((HistoryChartPicture{scale, Qt::red, 100, -5, 1}).draw(points).isNull());
  EXPECT_TRUE((HistoryChartPicture{scale, Qt::red, 100, 100, 0}).draw(points).isNull());
}

}  // namespace
}  // namespace korvantis
