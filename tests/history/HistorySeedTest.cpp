#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "history/HistoryFixture.h"

namespace korvantis {
namespace {

using test::HistoryTest;
using test::Rows;

class HistorySeed : public HistoryTest {
 protected:
  /// The row that lies `i` quarters of an hour before the present.
  Reading seeded(const std::vector<Reading>& readings, int i) const {
    return readings.at(static_cast<std::size_t>(672 - i));
  }

  void insertReading(std::int64_t start, double cpu) const {
    rows("INSERT INTO readings VALUES (" + std::to_string(start) + ", 300, " + std::to_string(cpu) +
         ", 1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1);");
  }
};

TEST_F(HistorySeed, ANewDatabaseHas672ReadingsAnd35HoursOfApplications) {
  open();
  EXPECT_EQ(value("SELECT COUNT(*) FROM readings"), "672");
  EXPECT_EQ(value("SELECT COUNT(*) FROM app_hours"), "35");
}

TEST_F(HistorySeed, EveryReadingIsWhatTheFormulasGive) {
  // Worked out column by column, in another order and precision than the program's.
  const auto readings = open().loadReadings(Instant{0});
  const long double physical = 17179869184.0L;
  ASSERT_EQ(readings.size(), 672U);
  for (int i = 1; i <= 672; ++i) {
    const Reading row = seeded(readings, i);
    const long double wave = 0.5L + 0.5L * std::sin(0.14L * i);
    const bool isSpike = i == i / 23 * 23;
    const bool isSeventh = i == i / 7 * 7;
    const auto isNear = [&](double stored, long double expected) {
      EXPECT_NEAR(stored, static_cast<double>(expected),
                  1e-9 * (1 + std::abs(static_cast<double>(expected))))
          << "row " << i;
    };
    EXPECT_EQ(row.start, 1'699'999'200 - 900 * i);
    EXPECT_EQ(row.seconds, 900);
    const long double cpu = 14 + 24 * wave + (isSpike ? 14 : 0);
    isNear(row.cpuPercentAvg, cpu);
    isNear(row.cpuPercentPeak, std::min(98.0L, cpu + 18 + (isSpike ? 28 : 0)));
    const long double memory = physical * (0.54L + 0.18L * wave);
    isNear(row.memoryUsedBytesAvg, memory);
    isNear(row.memoryUsedBytesPeak, std::min(1.08L * memory, 0.92L * physical));
    isNear(row.memoryPressurePercentAvg, 14 + 18 * wave);
    isNear(row.memoryPressurePercentPeak, 22 + 18 * wave);
    EXPECT_EQ(row.memoryPressureLevelPeak, 1);
    EXPECT_EQ(row.swapUsedBytesPeak, 256ULL << 20U);
    isNear(row.gpuPercentAvg, 8 + 19 * wave);
    isNear(row.gpuPercentPeak, std::min(95.0L, 24 + 19 * wave));
    EXPECT_EQ(row.neuralEnginePercentAvg, isSeventh ? 22 : 2.5);
    EXPECT_EQ(row.neuralEnginePercentPeak, isSeventh ? 48 : 6);
    const long double celsius = 43 + 12.5L * wave + (isSpike ? 7 : 0);
    isNear(row.cpuCelsiusAvg, celsius);
    isNear(row.cpuCelsiusPeak, celsius + 4.5L);
    isNear(row.hottestCelsiusAvg, celsius + 2.2L);
    isNear(row.hottestCelsiusPeak, celsius + 7.5L);
    EXPECT_EQ(row.fanRpmAvg, celsius > 52.8L ? 1850 : 0) << "row " << i;
    EXPECT_EQ(row.fanRpmPeak, celsius > 50.5L ? 2400 : 0) << "row " << i;
    const long double watts = 7.2L + 11.5L * wave + (isSpike ? 5.6L : 0);
    isNear(row.powerWattsAvg, watts);
    isNear(row.powerWattsPeak, watts + 6.4L);
    EXPECT_EQ(row.thermalStatePeak, 0);
    isNear(row.batteryPercentAvg, 78 + 21 * wave);
    EXPECT_EQ(row.pluggedInSeconds, 900);
  }
}

TEST_F(HistorySeed, TheLedgerHoldsTheseFiveApplicationsOnEachOfSevenDays) {
  open();
  const Rows apps{
      {"/Applications/Xcode.app", "Xcode", "app", "/Applications/Xcode.app", "7200.0", "1420.0",
       "26273120256000.0", "3649044480", "440401920", "146800640", "2977955840", "1488977920",
       "18400.0"},
      {"/Applications/Safari.app", "Safari", "app", "/Applications/Safari.app", "7200.0", "840.0",
       "16231956480000.0", "2254438400", "1761607680", "587202560", "964689920", "482344960",
       "9600.0"},
      {"/Applications/Cursor.app", "Cursor", "app", "/Applications/Cursor.app", "7200.0", "1120.0",
       "19931332608000.0", "2768240640", "566231040", "188743680", "1373634560", "686817280",
       "13200.0"},
      {"/System/Applications/Utilities/Terminal.app", "Terminal", "app",
       "/System/Applications/Utilities/Terminal.app", "7200.0", "620.0", "5888802816000.0",
       "817889280", "304087040", "100663296", "671088640", "335544320", "5400.0"},
      {"/System/Library/CoreServices/Finder.app", "Finder", "app",
       "/System/Library/CoreServices/Finder.app", "7200.0", "190.0", "3095396352000.0", "429916160",
       "47185920", "15728640", "325058560", "162529280", "2100.0"}};
  for (int day = 0; day < 7; ++day) {
    const std::string bucket = std::to_string(1'699'999'200 - 86'400 * day);
    EXPECT_EQ(rows("SELECT app_id, name, kind, bundle_path, active_seconds, cpu_load_seconds, "
                   "memory_byte_seconds, peak_memory_bytes, network_bytes_in, network_bytes_out, "
                   "disk_bytes_read, disk_bytes_written, energy_joules FROM app_hours "
                   "WHERE bucket_start = " +
                   bucket + " ORDER BY rowid"),
              apps)
        << bucket;
  }
}

TEST_F(HistorySeed, CutsThePresentToAQuarterAndToAnHour) {
  now = 1'700'003'599.9;
  open();
  EXPECT_EQ(value("SELECT MAX(start) FROM readings"), std::to_string(1'700'002'800 - 900));
  EXPECT_EQ(value("SELECT MIN(start) FROM readings"), std::to_string(1'700'002'800 - 672 * 900));
  EXPECT_EQ(value("SELECT MAX(bucket_start) FROM app_hours"), "1700002800");
}

TEST_F(HistorySeed, TheHourIsThatOfTheQuarterNotAMultipleOfThePresent) {
  now = 1'700'002'799;
  open();
  EXPECT_EQ(value("SELECT MAX(start) FROM readings"), std::to_string(1'700'001'900 - 900));
  EXPECT_EQ(value("SELECT MAX(bucket_start) FROM app_hours"), "1699999200");
}

TEST_F(HistorySeed, FiveRealReadingsGetTheWeekAroundThemAndStay) {
  open();
  close();
  rows("DELETE FROM readings; DELETE FROM app_hours;");
  for (int row = 0; row < 4; ++row) insertReading(1'699'999'200 + 300 * row, 91);
  insertReading(1'699'999'200 - 900, 92);

  const auto readings = open().loadReadings(Instant{0});

  EXPECT_EQ(readings.size(), 676U);
  EXPECT_EQ(seeded(readings, 1).cpuPercentAvg, 92);
  EXPECT_EQ(seeded(readings, 1).seconds, 300);
  EXPECT_EQ(value("SELECT COUNT(*) FROM readings WHERE cpu_percent_avg = 91"), "4");
}

TEST_F(HistorySeed, RowsOfTheFiveApplicationsInTheSameHourAreReplacedAndOthersStay) {
  open();
  close();
  rows(
      "DELETE FROM readings; DELETE FROM app_hours;"
      "INSERT INTO app_hours VALUES (1699999200, '/Applications/Xcode.app', 'Mine', 'other', "
      "NULL, 1,1,1,1,1,1,1,1,1);"
      "INSERT INTO app_hours VALUES (1699995600, '/Applications/Xcode.app', 'Mine', 'other', "
      "NULL, 1,1,1,1,1,1,1,1,1);");

  open();

  EXPECT_EQ(value("SELECT COUNT(*) FROM app_hours"), "36");
  EXPECT_EQ(rows("SELECT bucket_start, name, kind FROM app_hours WHERE app_id LIKE '%Xcode%' AND "
                 "bucket_start > 1699990000 ORDER BY bucket_start"),
            (Rows{{"1699995600", "Mine", "other"}, {"1699999200", "Xcode", "app"}}));
}

TEST_F(HistorySeed, ElevenReadingsAreTooFewAndTwelveAreEnough) {
  open();
  close();
  for (const auto& [count, expected] : {std::pair{11, 683}, std::pair{12, 12}}) {
    rows("DELETE FROM readings;");
    for (int row = 0; row < count; ++row) insertReading(1'800'000'000 + 300 * row, 50);
    open();
    close();
    EXPECT_EQ(number("SELECT COUNT(*) FROM readings"), expected) << count;
  }
}

TEST_F(HistorySeed, NoPeakPassesItsCeiling) {
  for (const Reading& row : open().loadReadings(Instant{0})) {
    EXPECT_LE(row.memoryUsedBytesPeak, 0.92 * 17179869184.0);
    EXPECT_LE(row.cpuPercentPeak, 98);
    EXPECT_LE(row.gpuPercentPeak, 95);
  }
}

TEST_F(HistorySeed, EveryTwentyThirdRowJumpsBy14PointsAnd7Degrees) {
  const auto readings = open().loadReadings(Instant{0});
  for (int i = 1; i <= 672; ++i) {
    const double wave = (std::sin(i * 0.14) + 1) / 2;
    const Reading row = seeded(readings, i);
    EXPECT_NEAR(row.cpuPercentAvg - (wave * 24 + 14), i % 23 == 0 ? 14 : 0, 1e-9) << i;
    EXPECT_NEAR(row.cpuCelsiusAvg - (wave * 12.5 + 43), i % 23 == 0 ? 7 : 0, 1e-9) << i;
  }
}

TEST_F(HistorySeed, NumbersAreStoredInTheirColumnsTypes) {
  open();
  EXPECT_EQ(rows("SELECT DISTINCT typeof(start), typeof(seconds), "
                 "typeof(memory_pressure_level_peak), typeof(swap_used_bytes_peak), "
                 "typeof(thermal_state_peak), typeof(fan_rpm_avg) FROM readings"),
            (Rows{{"integer", "real", "integer", "integer", "integer", "real"}}));
  EXPECT_EQ(rows("SELECT DISTINCT typeof(bucket_start), typeof(memory_byte_seconds), "
                 "typeof(peak_memory_bytes), typeof(energy_joules) FROM app_hours"),
            (Rows{{"integer", "real", "integer", "real"}}));
}

TEST_F(HistorySeed, AMachineThatDoesNotTellItsMemoryIsSeededWithNone) {
  platform.processInfo.physicalMemory = [] { return std::uint64_t{0}; };
  open();
  EXPECT_EQ(rows("SELECT DISTINCT memory_used_bytes_avg, memory_used_bytes_peak FROM readings"),
            (Rows{{"0.0", "0.0"}}));
}

}  // namespace
}  // namespace korvantis
