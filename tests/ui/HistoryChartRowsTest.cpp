#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "ui/panes/HistoryChartReading.h"
#include "ui/panes/HistoryChartRows.h"

namespace korvantis {
namespace {

using Points = QList<HistoryPoint>;

/// Rows at the times of a chart that is 100 wide and 100 seconds long.
struct Chart {
  Points points;
  HistoryChartScale scale{0, 100};

  HistoryChartRows rows() const { return {points, scale, 100}; }
};

TEST(HistoryChartRows, ThePointerReadsTheRowUnderItOrTheNearest) {
  const Chart chart{{{0, 1, 1}, {40, 2, 2}, {100, 3, 3}}};
  EXPECT_EQ(chart.rows().at(40.5), 1);
  EXPECT_EQ(chart.rows().at(0), 0);
  EXPECT_EQ(chart.rows().at(60), 1);
  EXPECT_EQ(chart.rows().at(80), 2);
  EXPECT_EQ(chart.rows().at(-50), 0);
  EXPECT_EQ(chart.rows().at(5000), 2);
}

TEST(HistoryChartRows, OfRowsAtOnePlaceTheHighestPeakSpeaks) {
  const Chart chart{{{10.1, 1, 5}, {10.4, 1, 90}, {10.9, 50, 60}, {11.1, 1, 100}}};
  EXPECT_EQ(chart.rows().at(10), 1);
  EXPECT_EQ(chart.rows().at(11), 3);
}

TEST(HistoryChartRows, TheKeysReachEveryPlaceInBothDirections) {
  Chart chart;
  for (int index = 0; index <= 1000; ++index) chart.points.append({index / 10.0, 1, 1});
  const HistoryChartRows rows = chart.rows();
  std::vector<double> forwards;
  for (auto row = rows.first(); row; row = rows.after(*row)) {
    forwards.push_back(rows.xOf(chart.points[*row]));
  }
  std::vector<double> backwards;
  for (auto row = rows.last(); row; row = rows.before(*row)) {
    backwards.push_back(rows.xOf(chart.points[*row]));
  }
  EXPECT_EQ(forwards.size(), 100U);
  EXPECT_EQ(forwards, std::vector<double>(backwards.rbegin(), backwards.rend()));
}

TEST(HistoryChartRows, TheKeysStopAtEverySpike) {
  Chart chart;
  for (int index = 0; index <= 5000; ++index) chart.points.append({index / 50.0, 1, 1});
  const std::vector<qsizetype> spikes{0, 777, 778, 2500, 4999, 5000};
  for (const qsizetype spike : spikes) {
    Chart spiked = chart;
    spiked.points[spike].peak = 99;
    const HistoryChartRows rows = spiked.rows();
    bool isRead = false;
    for (auto row = rows.first(); row; row = rows.after(*row)) isRead = isRead || *row == spike;
    EXPECT_TRUE(isRead) << spike;
  }
}

TEST(HistoryChartRows, FewRowsAreReadOneByOneInTheOrderOfTheirTimes) {
  const Chart chart{{{80, 1, 1}, {0, 1, 1}, {50, 1, 1}}};
  const HistoryChartRows rows = chart.rows();
  EXPECT_EQ(rows.first(), 1);
  EXPECT_EQ(rows.after(1), 2);
  EXPECT_EQ(rows.after(2), 0);
  EXPECT_EQ(rows.after(0), std::nullopt);
  EXPECT_EQ(rows.last(), 0);
  EXPECT_EQ(rows.before(1), std::nullopt);
}

TEST(HistoryChartRows, RowsThatAreNoNumbersArePassedOver) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const Chart chart{{{none, 1, 1}, {10, none, 1}, {20, 1, none}, {30, 1, 1}}};
  EXPECT_EQ(chart.rows().first(), 3);
  EXPECT_EQ(chart.rows().at(10), 3);
  EXPECT_EQ(Chart{}.rows().at(10), std::nullopt);
  EXPECT_EQ((HistoryChartRows({}, {}, 100).first()), std::nullopt);
}

TEST(HistoryChartReading, TellsTimeAverageAndPeak) {
  const HistoryChartReading reading =
      historyChartReading({1'795'252'500, 12.34, 56.78}, QStringLiteral("%"), QTimeZone::utc());
  EXPECT_TRUE(reading.isShown);
  EXPECT_EQ(reading.time, QStringLiteral("Sat, Nov 21 2026, 09:15"));
  EXPECT_EQ(reading.average, QStringLiteral("Average: 12.3 %"));
  EXPECT_EQ(reading.peak, QStringLiteral("Peak: 56.8 %"));
  EXPECT_EQ(reading.sentence,
            QStringLiteral("Sat, Nov 21 2026, 09:15. Average: 12.3 %, Peak: 56.8 %"));
}

TEST(HistoryChartReading, ATimeThatIsNoDateHasNoWords) {
  for (const double date : {1e99, -1e99, 9.3e18}) {
    const auto reading = historyChartReading({date, 1, 2}, QStringLiteral("W"), QTimeZone::utc());
    EXPECT_EQ(reading.peak, QStringLiteral("Peak: 2.0 W"));
  }
}

}  // namespace
}  // namespace korvantis
