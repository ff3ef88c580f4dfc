#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "history/HistoryFixture.h"

namespace korvantis {
namespace {

using test::HistoryTest;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

/// A database that holds nothing but what a test puts in.
class HistoryQueries : public HistoryTest {
 protected:
  void SetUp() override {
    open();
    rows("DELETE FROM readings; DELETE FROM app_hours;");
  }

  void insertReading(std::int64_t start, const std::string& seconds = "300") const {
    rows("INSERT INTO readings VALUES (" + std::to_string(start) + ", " + seconds +
         ", 2,3,4,5,6,7,4,9,10,11,12,13,14,15,16,17,18,19,20,21,3,23,24);");
  }

  /// `figures` are the last nine columns.
  void insertAppHour(std::int64_t bucket, const std::string& idAndNameAndKindAndPath,
                     const std::string& figures = "1,1,1,1,1,1,1,1,1") const {
    rows("INSERT INTO app_hours VALUES (" + std::to_string(bucket) + ", " +
         idAndNameAndKindAndPath + ", " + figures + ");");
  }

  std::vector<HistoricalAppSummary> summaries(double since = 0) {
    return history().loadAppSummaries(Instant{since});
  }

  std::vector<std::string> summaryIDs() {
    std::vector<std::string> ids;
    for (const auto& summary : summaries()) ids.push_back(summary.appID);
    return ids;
  }
};

TEST_F(HistoryQueries, AReadingHasItsColumnsInTheirFields) {
  insertReading(600, "299.5");
  EXPECT_THAT(history().loadReadings(Instant{0}),
              ElementsAre(Reading{.start = 600,
                                  .seconds = 299.5,
                                  .cpuPercentAvg = 2,
                                  .cpuPercentPeak = 3,
                                  .memoryUsedBytesAvg = 4,
                                  .memoryUsedBytesPeak = 5,
                                  .memoryPressurePercentAvg = 6,
                                  .memoryPressurePercentPeak = 7,
                                  .memoryPressureLevelPeak = 4,
                                  .swapUsedBytesPeak = 9,
                                  .gpuPercentAvg = 10,
                                  .gpuPercentPeak = 11,
                                  .neuralEnginePercentAvg = 12,
                                  .neuralEnginePercentPeak = 13,
                                  .cpuCelsiusAvg = 14,
                                  .cpuCelsiusPeak = 15,
                                  .hottestCelsiusAvg = 16,
                                  .hottestCelsiusPeak = 17,
                                  .fanRpmAvg = 18,
                                  .fanRpmPeak = 19,
                                  .powerWattsAvg = 20,
                                  .powerWattsPeak = 21,
                                  .thermalStatePeak = 3,
                                  .batteryPercentAvg = 23,
                                  .pluggedInSeconds = 24}));
}

TEST_F(HistoryQueries, ReadingsComeOldestFirst) {
  for (const std::int64_t start : {900, 300, 1200, 600}) insertReading(start);
  EXPECT_THAT(history().loadReadings(Instant{0}),
              ElementsAre(Field(&Reading::start, 300), Field(&Reading::start, 600),
                          Field(&Reading::start, 900), Field(&Reading::start, 1200)));
}

TEST_F(HistoryQueries, ASinceEqualToAStartIncludesThatRow) {
  insertReading(600);
  insertReading(900);
  EXPECT_EQ(history().loadReadings(Instant{600}).size(), 2U);
  EXPECT_EQ(history().loadReadings(Instant{600.9}).size(), 2U) << "the fraction is cut";
  EXPECT_EQ(history().loadReadings(Instant{601}).size(), 1U);
  EXPECT_THAT(history().loadReadings(Instant{901}), IsEmpty());
}

TEST_F(HistoryQueries, MomentsBeyondAllTimeAreHeldAtTheEnds) {
  insertReading(-300);
  EXPECT_EQ(history().loadReadings(Instant{-1e300}).size(), 1U);
  EXPECT_THAT(history().loadReadings(Instant{1e300}), IsEmpty());
  EXPECT_EQ(history().loadReadings(Instant{-299.5}).size(), 0U) << "cut toward zero";
  EXPECT_EQ(history().loadReadings(Instant{-300.5}).size(), 1U);
}

TEST_F(HistoryQueries, SeededAndLiveRowsStandSideBySideUnchanged) {
  insertReading(600, "900");
  insertReading(1500, "17");
  EXPECT_THAT(history().loadReadings(Instant{0}),
              ElementsAre(Field(&Reading::seconds, 900), Field(&Reading::seconds, 17)));
}

TEST_F(HistoryQueries, ANegativeSwapIsZeroAndSmallColumnsKeep32Bits) {
  insertReading(600);
  rows("UPDATE readings SET swap_used_bytes_peak = -5, thermal_state_peak = 4294967298");
  const auto readings = history().loadReadings(Instant{0});
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].swapUsedBytesPeak, 0U);
  EXPECT_EQ(readings[0].thermalStatePeak, 2);
}

TEST_F(HistoryQueries, AnApplicationsHoursAreSummedAndItsPeakIsTheHighest) {
  insertAppHour(3600, "'id', 'Name', 'app', '/path'", "10, 20, 30, 400, 50, 60, 70, 80, 90");
  insertAppHour(7200, "'id', 'Name', 'app', '/path'", "1, 2, 3, 4, 5, 6, 7, 8, 9.5");
  EXPECT_THAT(summaries(), ElementsAre(HistoricalAppSummary{.appID = "id",
                                                            .name = "Name",
                                                            .kind = "app",
                                                            .bundlePath = "/path",
                                                            .activeSeconds = 11,
                                                            .cpuLoadSeconds = 22,
                                                            .memoryByteSeconds = 33,
                                                            .peakMemoryBytes = 400,
                                                            .networkBytesIn = 55,
                                                            .networkBytesOut = 66,
                                                            .diskBytesRead = 77,
                                                            .diskBytesWritten = 88,
                                                            .energyJoules = 99.5}));
}

TEST_F(HistoryQueries, OfDifferentNamesTheGreatestByTextIsShownNotTheLatest) {
  insertAppHour(3600, "'id', 'b first', 'other', '/b'");
  insertAppHour(7200, "'id', 'B later', 'app', NULL");
  insertAppHour(10800, "'id', 'a last', 'system', '/a'");
  const auto list = summaries();
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].name, "b first");
  EXPECT_EQ(list[0].kind, "system");
  EXPECT_EQ(list[0].bundlePath, "/b");
}

TEST_F(HistoryQueries, AnHourCountsWhenItBeginsAtOrAfterSince) {
  insertAppHour(3600, "'early', 'n', 'app', NULL");
  insertAppHour(7200, "'late', 'n', 'app', NULL");
  EXPECT_EQ(summaries(3600).size(), 2U);
  EXPECT_THAT(summaries(3601), ElementsAre(Field(&HistoricalAppSummary::appID, "late")))
      << "the hour in which since falls is left out whole";
  EXPECT_THAT(summaries(7200.5), ElementsAre(Field(&HistoricalAppSummary::appID, "late")));
}

TEST_F(HistoryQueries, ABundlePathThatIsNullIsAbsent) {
  insertAppHour(3600, "'id', 'n', 'app', NULL");
  EXPECT_EQ(summaries().at(0).bundlePath, std::nullopt);
}

TEST_F(HistoryQueries, NullsOfAForeignTableAreReplaced) {
  rows(
      "DROP TABLE app_hours; CREATE TABLE app_hours (bucket_start, app_id, name, kind, "
      "bundle_path, active_seconds, cpu_load_seconds, memory_byte_seconds, peak_memory_bytes, "
      "network_bytes_in, network_bytes_out, disk_bytes_read, disk_bytes_written, energy_joules);"
      "INSERT INTO app_hours (bucket_start, energy_joules) VALUES (3600, 2);"
      "INSERT INTO app_hours (bucket_start, app_id, energy_joules, network_bytes_in) "
      "VALUES (3600, 'x', 1, -7);");
  const auto list = summaries();
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0], (HistoricalAppSummary{.appID = "unknown",
                                           .name = "unknown",
                                           .kind = "app",
                                           .bundlePath = std::nullopt,
                                           .energyJoules = 2}));
  EXPECT_EQ(list[1].name, "x") << "the id stands in for the name";
  EXPECT_EQ(list[1].networkBytesIn, 0U) << "a negative count is none";
}

TEST_F(HistoryQueries, OrderIsByEnergyAndThenByPeakMemory) {
  insertAppHour(3600, "'small', 'n', 'app', NULL", "1,1,1,10,1,1,1,1,5");
  insertAppHour(3600, "'large', 'n', 'app', NULL", "1,1,1,20,1,1,1,1,5");
  insertAppHour(3600, "'thirsty', 'n', 'app', NULL", "1,1,1,1,1,1,1,1,3");
  insertAppHour(7200, "'thirsty', 'n', 'app', NULL", "1,1,1,1,1,1,1,1,3");
  EXPECT_THAT(summaryIDs(), ElementsAre("thirsty", "large", "small"));
}

TEST_F(HistoryQueries, OfMoreThanFiftyTheLeastThirstyFallOff) {
  for (int index = 0; index < 53; ++index) {
    insertAppHour(3600, "'app" + std::to_string(index) + "', 'n', 'app', NULL",
                  "1,1,1,1,1,1,1,1," + std::to_string(index));
  }
  const auto ids = summaryIDs();
  ASSERT_EQ(ids.size(), 50U);
  EXPECT_EQ(ids.front(), "app52");
  EXPECT_EQ(ids.back(), "app3");
}

TEST_F(HistoryQueries, ASumThatNoCellHoldsEndsTheList) {
  const std::string most = std::to_string(std::numeric_limits<std::int64_t>::max());
  insertAppHour(3600, "'id', 'n', 'app', NULL", "1,1,1,1," + most + ",1,1,1,1");
  insertAppHour(7200, "'id', 'n', 'app', NULL", "1,1,1,1," + most + ",1,1,1,1");
  EXPECT_THAT(summaries(), IsEmpty());
}

TEST_F(HistoryQueries, WhatIsRecordedIsRead) {
  history().recordSample(test::sampleAt(1'700'001'234), {test::groupNamed("Editor")}, 2);
  EXPECT_THAT(history().loadReadings(Instant{0}),
              ElementsAre(Field(&Reading::start, 1'700'001'000)));
  EXPECT_THAT(summaries(), ElementsAre(Field(&HistoricalAppSummary::name, "Editor")));
}

}  // namespace
}  // namespace korvantis
