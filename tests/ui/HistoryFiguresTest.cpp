#include <gtest/gtest.h>

#include "state/HistoryMetricKind.h"
#include "ui/panes/HistoryFigures.h"

namespace korvantis {
namespace {

Reading distinctReading() {
  Reading reading;
  reading.start = 1'800'000'000;
  reading.cpuPercentAvg = 1;
  reading.cpuPercentPeak = 2;
  reading.memoryUsedBytesAvg = 3;
  reading.memoryUsedBytesPeak = 4;
  reading.gpuPercentAvg = 5;
  reading.gpuPercentPeak = 6;
  reading.neuralEnginePercentAvg = 7;
  reading.neuralEnginePercentPeak = 8;
  reading.cpuCelsiusAvg = 9;
  reading.cpuCelsiusPeak = 10;
  reading.hottestCelsiusAvg = 11;
  reading.hottestCelsiusPeak = 12;
  reading.fanRpmAvg = 13;
  reading.fanRpmPeak = 14;
  reading.powerWattsAvg = 15;
  reading.powerWattsPeak = 16;
  return reading;
}

HistoryPoint pointOf(HistoryMetricKind metric, std::uint64_t totalMemoryBytes = 8) {
  return HistoryFigures::points({distinctReading()}, metric, totalMemoryBytes).first();
}

TEST(HistoryFigures, EachMetricTakesItsOwnColumns) {
  constexpr double start = 1'800'000'000;
  EXPECT_EQ(pointOf(HistoryMetricKind::cpu), (HistoryPoint{start, 1, 2}));
  EXPECT_EQ(pointOf(HistoryMetricKind::memory), (HistoryPoint{start, 37.5, 50}));
  EXPECT_EQ(pointOf(HistoryMetricKind::gpu), (HistoryPoint{start, 5, 6}));
  EXPECT_EQ(pointOf(HistoryMetricKind::neuralEngine), (HistoryPoint{start, 7, 8}));
  EXPECT_EQ(pointOf(HistoryMetricKind::fans), (HistoryPoint{start, 13, 14}));
  EXPECT_EQ(pointOf(HistoryMetricKind::power), (HistoryPoint{start, 15, 16}));
}

TEST(HistoryFigures, TheTemperatureIsTheProcessorsAndNotThatOfTheHottestSensor) {
  EXPECT_EQ(pointOf(HistoryMetricKind::temperature), (HistoryPoint{1'800'000'000, 9, 10}));
}

TEST(HistoryFigures, MemoryOfAMachineWithATotalOf0IsDividedBy1AndGivesHugePercentages) {
  EXPECT_EQ(pointOf(HistoryMetricKind::memory, 0), (HistoryPoint{1'800'000'000, 300, 400}));
}

TEST(HistoryFigures, EveryRowIsAPointInItsOrder) {
  std::vector<Reading> readings(3);
  readings[0].start = 900;
  readings[1].start = 300;
  readings[2].start = 300;
  const auto points = HistoryFigures::points(readings, HistoryMetricKind::cpu, 1);
  ASSERT_EQ(points.size(), 3);
  EXPECT_EQ(points[0].date, 900);
  EXPECT_EQ(points[1].date, 300);
  EXPECT_EQ(points[2].date, 300);
}

TEST(HistoryFigures, TheAverageIsAPlainMeanOverRowsWhateverTimeEachStandsFor) {
  std::vector<Reading> readings(2);
  readings[0].seconds = 900;
  readings[0].cpuPercentAvg = 10;
  readings[1].seconds = 300;
  readings[1].cpuPercentAvg = 40;
  const auto points = HistoryFigures::points(readings, HistoryMetricKind::cpu, 1);
  EXPECT_EQ(HistoryFigures::average(points), 25);
}

TEST(HistoryFigures, ThePeakIsTheLargestPeak) {
  EXPECT_EQ(HistoryFigures::peak({{0, 50, 20}, {1, 90, 70}, {2, 10, 30}}), 70);
  EXPECT_EQ(HistoryFigures::peak({{0, 0, -20}, {1, 0, -5}}), -5);
}

TEST(HistoryFigures, WithoutPointsBothAre0) {
  EXPECT_EQ(HistoryFigures::average({}), 0);
  EXPECT_EQ(HistoryFigures::peak({}), 0);
}

}  // namespace
}  // namespace korvantis
