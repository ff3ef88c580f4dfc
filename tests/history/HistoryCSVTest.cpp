#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "history/HelperProgram.h"
#include "history/HistoryCSV.h"
#include "history/HistoryFixture.h"
#include "support/CommaLocale.h"

namespace korvantis {
namespace {

using test::HistoryTest;
using ::testing::ElementsAre;
using ::testing::StartsWith;

const std::string readingsHeader =
    "timestamp_epoch,seconds,cpu_avg_pct,cpu_peak_pct,memory_avg_bytes,memory_peak_bytes,"
    "gpu_avg_pct,cpu_celsius_avg,hottest_celsius_peak,power_watts_avg,battery_pct_avg\n";
const std::string appsHeader =
    "app_id,name,kind,active_seconds,cpu_load_seconds,avg_memory_bytes,peak_memory_bytes,"
    "network_in_bytes,network_out_bytes,disk_read_bytes,disk_written_bytes,energy_watt_hours\n";

Reading ordinaryReading() {
  return {.start = 1'700'001'000,
          .seconds = 299.99,
          .cpuPercentAvg = 12.345,
          .cpuPercentPeak = 99.999,
          .memoryUsedBytesAvg = 5'000'000'000.75,
          .memoryUsedBytesPeak = 6'000'000'000.5,
          .gpuPercentAvg = 0.125,
          .cpuCelsiusAvg = 51.25,
          .hottestCelsiusPeak = 63.35,
          .powerWattsAvg = 8.005,
          .batteryPercentAvg = 100};
}

HistoricalAppSummary ordinarySummary() {
  return {.appID = "/Applications/Editor.app",
          .name = "Editor",
          .kind = "app",
          .bundlePath = "/Applications/Editor.app",
          .activeSeconds = 12.9,
          .cpuLoadSeconds = 3.456,
          .memoryByteSeconds = 129,
          .peakMemoryBytes = 400,
          .networkBytesIn = 1,
          .networkBytesOut = 2,
          .diskBytesRead = 3,
          .diskBytesWritten = 18446744073709551615U,
          .energyJoules = 4500};
}

TEST(HistoryCSV, WithoutRecordsThereAreOnlyHeaders) {
  EXPECT_EQ(HistoryCSV::readingsText({}), readingsHeader);
  EXPECT_EQ(HistoryCSV::appsText({}), appsHeader);
}

TEST(HistoryCSV, AReadingIsOneLineInItsForms) {
  EXPECT_EQ(HistoryCSV::readingsText({ordinaryReading()}),
            readingsHeader +
                "1700001000,299,12.35,100.00,5000000000,6000000000,0.12,51.2,63.4,8.01,100.0\n");
}

TEST(HistoryCSV, ASummaryIsOneLineInItsForms) {
  EXPECT_EQ(HistoryCSV::appsText({ordinarySummary()}),
            appsHeader +
                "\"/Applications/Editor.app\",\"Editor\",app,12,3.46,10,400,1,2,3,"
                "18446744073709551615,1.250\n");
}

TEST(HistoryCSV, AgreesWithPrintfForManyFigures) {
  std::vector<Reading> readings;
  std::string expected = readingsHeader;
  for (int step = 0; step < 2000; ++step) {
    Reading reading = ordinaryReading();
    reading.start = step * 300;
    reading.cpuPercentAvg = step * 0.0425;
    reading.cpuCelsiusAvg = step * 0.05 - 20;
    reading.powerWattsAvg = step * 0.005;
    reading.batteryPercentAvg = step * 0.0625;
    readings.push_back(reading);
    std::array<char, 256> line{};
    std::snprintf(line.data(), line.size(),
                  "%d,299,%.2f,%.2f,5000000000,6000000000,%.2f,%.1f,%.1f,%.2f,%.1f\n", step * 300,
                  reading.cpuPercentAvg, reading.cpuPercentPeak, reading.gpuPercentAvg,
                  reading.cpuCelsiusAvg, reading.hottestCelsiusPeak, reading.powerWattsAvg,
                  reading.batteryPercentAvg);
    expected += line.data();
  }
  EXPECT_EQ(HistoryCSV::readingsText(readings), expected);
}

TEST(HistoryCSV, TheDecimalPointIsAPeriodInEveryLocale) {
  const test::CommaLocale locale;
  if (!locale.isSet()) GTEST_SKIP() << "no locale with a decimal comma";
  EXPECT_THAT(HistoryCSV::readingsText({ordinaryReading()}),
              StartsWith(readingsHeader + "1700001000,299,12.35,"));
}

TEST(HistoryCSV, AQuoteIsDoubledAndACommaIsSafe) {
  HistoricalAppSummary summary = ordinarySummary();
  summary.appID = "daemon:\"\"";
  summary.name = "Say \"hello\", world\nagain";
  EXPECT_THAT(
      HistoryCSV::appsText({summary}),
      StartsWith(appsHeader + "\"daemon:\"\"\"\"\",\"Say \"\"hello\"\", world\nagain\",app,12,"));
}

TEST(HistoryCSV, TheKindIsNeverQuoted) {
  HistoricalAppSummary summary = ordinarySummary();
  summary.kind = "odd \"kind";
  EXPECT_THAT(HistoryCSV::appsText({summary}), ::testing::HasSubstr("\"Editor\",odd \"kind,12,"));
}

TEST(HistoryCSV, WithoutActiveSecondsTheAverageIsThePeak) {
  HistoricalAppSummary summary = ordinarySummary();
  summary.activeSeconds = 0;
  EXPECT_THAT(HistoryCSV::appsText({summary}), ::testing::HasSubstr(",app,0,3.46,400,400,"));
}

TEST(HistoryCSV, FiguresOfADamagedDatabaseAreWrittenWithoutHarm) {
  Reading reading = ordinaryReading();
  reading.start = std::numeric_limits<std::int64_t>::min();
  reading.seconds = std::numeric_limits<double>::infinity();
  reading.memoryUsedBytesAvg = -2.9;
  reading.memoryUsedBytesPeak = -1e300;
  reading.cpuPercentAvg = -std::numeric_limits<double>::infinity();
  reading.cpuPercentPeak = std::numeric_limits<double>::max();
  const std::string largest = [] {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%.2f", std::numeric_limits<double>::max());
    return std::string(text.data());
  }();
  EXPECT_EQ(HistoryCSV::readingsText({reading}),
            readingsHeader + "-9223372036854775808,9223372036854775807,-inf," + largest +
                ",-2,-9223372036854775808,0.12,51.2,63.4,8.01,100.0\n");
}

class HistoryExport : public HistoryTest {
 protected:
  void SetUp() override { folder.folderAt("downloads"); }

  std::vector<std::string> downloads() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path("downloads"))) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }
};

TEST_F(HistoryExport, WritesBothFilesIntoTheFirstDownloadsFolder) {
  const ExportedCSVFiles files = history().exportCSVToDownloads(Instant{0});
  EXPECT_EQ(files.readingsURL, folder.path("downloads/ostrel-system-readings.csv"));
  EXPECT_EQ(files.appsURL, folder.path("downloads/ostrel-app-usage.csv"));
  EXPECT_EQ(bytesOf("downloads/ostrel-system-readings.csv"),
            HistoryCSV::readingsText(history().loadReadings(Instant{0})));
  EXPECT_EQ(bytesOf("downloads/ostrel-app-usage.csv"),
            HistoryCSV::appsText(history().loadAppSummaries(Instant{0})));
  EXPECT_THAT(downloads(), ElementsAre("ostrel-app-usage.csv", "ostrel-system-readings.csv"))
      << "nothing temporary is left";
}

TEST_F(HistoryExport, HoldsTheRangeAskedFor) {
  const Instant since{now - 3 * 900};
  history().exportCSVToDownloads(since);
  EXPECT_EQ(bytesOf("downloads/ostrel-system-readings.csv"),
            HistoryCSV::readingsText(history().loadReadings(since)));
  const std::string text = bytesOf("downloads/ostrel-system-readings.csv");
  EXPECT_EQ(std::ranges::count(text, '\n'), 4);
}

TEST_F(HistoryExport, ReplacesTheFilesOfTheExportBefore) {
  folder.write("downloads/ostrel-system-readings.csv", std::string(1 << 20, 'x'));
  history().exportCSVToDownloads(Instant{now + 1});
  EXPECT_EQ(bytesOf("downloads/ostrel-system-readings.csv"), readingsHeader);
  EXPECT_EQ(bytesOf("downloads/ostrel-app-usage.csv"), appsHeader);
}

TEST_F(HistoryExport, WithoutAHistoryTwoFilesHoldOnlyTheirHeaders) {
  folder.folderAt("support/Korvantis/history.sqlite");
  folder.folderAt("temporary/Korvantis/history.sqlite");
  const ExportedCSVFiles files = history().exportCSVToDownloads(Instant{0});
  EXPECT_TRUE(files.readingsURL && files.appsURL);
  EXPECT_EQ(bytesOf("downloads/ostrel-system-readings.csv"), readingsHeader);
  EXPECT_EQ(bytesOf("downloads/ostrel-app-usage.csv"), appsHeader);
}

TEST_F(HistoryExport, WithoutADownloadsFolderTheTemporaryOneIsUsed) {
  folder.folderAt("temporary");
  platform.files.downloadsDirectories = [] { return std::vector<std::string>(); };
  EXPECT_EQ(history().exportCSVToDownloads(Instant{0}),
            (ExportedCSVFiles{folder.path("temporary/ostrel-system-readings.csv"),
                              folder.path("temporary/ostrel-app-usage.csv")}));
}

TEST_F(HistoryExport, ADownloadsFolderThatIsMissingIsNotMade) {
  folder.remove("downloads");
  EXPECT_EQ(history().exportCSVToDownloads(Instant{0}), ExportedCSVFiles{});
  EXPECT_FALSE(std::filesystem::exists(folder.path("downloads")));
}

TEST_F(HistoryExport, EachFileIsWrittenWhetherOrNotTheOtherWas) {
  folder.folderAt("downloads/ostrel-system-readings.csv/taken");
  EXPECT_EQ(history().exportCSVToDownloads(Instant{0}),
            (ExportedCSVFiles{std::nullopt, folder.path("downloads/ostrel-app-usage.csv")}));
  EXPECT_THAT(downloads(), ElementsAre("ostrel-app-usage.csv", "ostrel-system-readings.csv"));

  folder.remove("downloads");
  folder.folderAt("downloads/ostrel-app-usage.csv/taken");
  EXPECT_EQ(history().exportCSVToDownloads(Instant{0}),
            (ExportedCSVFiles{folder.path("downloads/ostrel-system-readings.csv"), std::nullopt}));
}

TEST_F(HistoryExport, WritesAfterTheLoadsAndOutsideTheLock) {
  platform.files.writeAtomically = [this](const std::string&, std::string_view) {
    // Would never come back if the export held the lock.
    EXPECT_EQ(history().loadReadings(Instant{0}).size(), 672U);
    return false;
  };
  EXPECT_EQ(history().exportCSVToDownloads(Instant{0}), ExportedCSVFiles{});
}

TEST_F(HistoryExport, OfAYearHoldsTheReadingsAndTheTextsInMemoryAndNoThirdCopy) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer's own memory would be measured";
#endif
  open();
  close();
  rows(
      "DELETE FROM readings; WITH RECURSIVE row(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM row "
      "WHERE n < 105119) INSERT INTO readings SELECT 1700000100 + n * 300, 300, n % 97 + 0.37, "
      "99.5, 5e9, 6e9, 50, 60, 1, 0, 12.25, 30.5, 1, 2, 50.5, 60.5, 70.5, 80.5, 0, 0, 9.75, 20, "
      "0, 80.5, 300 FROM row;");
  test::HelperProgram helper({"export", folder.path()});
  std::istringstream answer(helper.readAll());
  std::int64_t grown = 0;
  std::int64_t needed = 0;
  ASSERT_TRUE(answer >> grown >> needed);
  ASSERT_GT(needed, 25'000'000);
  EXPECT_GT(grown, needed / 2) << "nothing was measured";
  // The smaller of the two, the text, takes more than that.
  EXPECT_LT(grown, needed + 5'000'000);
}

}  // namespace
}  // namespace korvantis
