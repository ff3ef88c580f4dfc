#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "history/HistoryFixture.h"

namespace korvantis {
namespace {

using test::groupNamed;
using test::HistoryTest;
using test::Rows;
using test::sampleAt;
using ::testing::IsEmpty;

constexpr double flushTime = 1'700'001'234.75;
constexpr std::int64_t fiveMinutes = 1'700'001'000;
constexpr std::int64_t hour = 1'699'999'200;

class HistoryRecord : public HistoryTest {
 protected:
  /// The one reading that was recorded, not seeded.
  Reading recorded() {
    const auto readings = history().loadReadings(Instant{static_cast<double>(fiveMinutes)});
    EXPECT_EQ(readings.size(), 1U);
    return readings.empty() ? Reading{} : readings.front();
  }

  /// Records a processor load only.
  void recordLoad(double timestamp, double cpuPercent, double elapsed = 2) {
    SystemSample system = sampleAt(timestamp);
    system.cpuPercent = cpuPercent;
    history().recordSample(system, {}, elapsed);
  }

  std::int64_t recordedCount() {
    return static_cast<std::int64_t>(history().loadReadings(Instant{0}).size()) - 672;
  }

  Rows ledgerOf(const std::string& name) const {
    return rows("SELECT * FROM app_hours WHERE app_id = '/Applications/" + name + ".app'");
  }
};

TEST_F(HistoryRecord, AFlushWritesEveryFigureOfTheMachine) {
  history().recordSample(sampleAt(flushTime), {}, 2);
  EXPECT_EQ(recorded(), (Reading{.start = fiveMinutes,
                                 .seconds = 2,
                                 .cpuPercentAvg = 10.5,
                                 .cpuPercentPeak = 10.5,
                                 .memoryUsedBytesAvg = 5e9,
                                 .memoryUsedBytesPeak = 5e9,
                                 .memoryPressurePercentAvg = 31.25,
                                 .memoryPressurePercentPeak = 31.25,
                                 .memoryPressureLevelPeak = 2,
                                 .swapUsedBytesPeak = 123'456'789,
                                 .gpuPercentAvg = 22.5,
                                 .gpuPercentPeak = 22.5,
                                 .neuralEnginePercentAvg = 3.5,
                                 .neuralEnginePercentPeak = 3.5,
                                 .cpuCelsiusAvg = 51.5,
                                 .cpuCelsiusPeak = 51.5,
                                 .hottestCelsiusAvg = 63.25,
                                 .hottestCelsiusPeak = 63.25,
                                 .fanRpmAvg = 2600.5,
                                 .fanRpmPeak = 2600.5,
                                 .powerWattsAvg = 17.75,
                                 .powerWattsPeak = 17.75,
                                 .thermalStatePeak = 1,
                                 .batteryPercentAvg = 77.5,
                                 .pluggedInSeconds = 0}));
}

TEST_F(HistoryRecord, ASecondFlushInTheBucketMergesEveryColumnByItsRule) {
  SystemSample first = sampleAt(flushTime);
  first.battery->isPluggedIn = true;
  history().recordSample(first, {}, 2);
  SystemSample second;
  second.timestamp = Instant{flushTime + 10};
  second.cpuPercent = 20.5;
  second.memoryUsedBytes = 4'000'000'000;
  second.memoryPressurePercent = 33.25;
  second.memoryPressure = MemoryPressureLevel::critical;
  second.swapUsedBytes = 1;
  second.gpuPercent = 2.5;
  second.neuralEnginePercent = 7.5;
  second.thermal.cpuCelsius = 50.5;
  second.thermal.hottestCelsius = 64.25;
  second.thermal.systemPowerWatts = 7.75;
  second.thermal.thermalStateLevel = 3;
  second.battery = BatterySample{};
  second.battery->percentage = 75.5;
  history().recordSample(second, {}, 2);

  EXPECT_EQ(recorded(), (Reading{.start = fiveMinutes,
                                 .seconds = 12,
                                 .cpuPercentAvg = 15.5,
                                 .cpuPercentPeak = 20.5,
                                 .memoryUsedBytesAvg = 4.5e9,
                                 .memoryUsedBytesPeak = 5e9,
                                 .memoryPressurePercentAvg = 32.25,
                                 .memoryPressurePercentPeak = 33.25,
                                 .memoryPressureLevelPeak = 4,
                                 .swapUsedBytesPeak = 123'456'789,
                                 .gpuPercentAvg = 12.5,
                                 .gpuPercentPeak = 22.5,
                                 .neuralEnginePercentAvg = 5.5,
                                 .neuralEnginePercentPeak = 7.5,
                                 .cpuCelsiusAvg = 51,
                                 .cpuCelsiusPeak = 51.5,
                                 .hottestCelsiusAvg = 63.75,
                                 .hottestCelsiusPeak = 64.25,
                                 .fanRpmAvg = 1300.25,
                                 .fanRpmPeak = 2600.5,
                                 .powerWattsAvg = 12.75,
                                 .powerWattsPeak = 17.75,
                                 .thermalStatePeak = 3,
                                 .batteryPercentAvg = 76.5,
                                 .pluggedInSeconds = 12}));
}

TEST_F(HistoryRecord, AveragesLeanOnTheLastFlushesOnPurpose) {
  recordLoad(flushTime, 10);
  recordLoad(flushTime + 10, 30);
  EXPECT_EQ(recorded().cpuPercentAvg, 20);
  EXPECT_EQ(recorded().seconds, 12);
  recordLoad(flushTime + 20, 50);
  EXPECT_EQ(recorded().cpuPercentAvg, 35) << "not the mean, which is 30";
  EXPECT_EQ(recorded().cpuPercentPeak, 50);
}

TEST_F(HistoryRecord, TheFirstFlushOfARunStandsForTheTicksOwnTime) {
  recordLoad(flushTime, 10, 2.5);
  EXPECT_EQ(recorded().seconds, 2.5);
}

TEST_F(HistoryRecord, TheFirstFlushStandsForAtLeastASecond) {
  recordLoad(flushTime, 10, 0.5);
  EXPECT_EQ(recorded().seconds, 1);
}

TEST_F(HistoryRecord, LaterFlushesStandForTheTimeSinceTheFlushBefore) {
  recordLoad(flushTime, 10, 2);
  recordLoad(flushTime + 11.5, 10, 99);
  EXPECT_EQ(recorded().seconds, 13.5);
}

TEST_F(HistoryRecord, ATickWithinTenSecondsIsDropped) {
  recordLoad(flushTime, 10);
  recordLoad(flushTime + 9.9, 90);
  EXPECT_EQ(recorded().cpuPercentPeak, 10);
  EXPECT_EQ(recorded().seconds, 2);
  recordLoad(flushTime + 10, 30);
  EXPECT_EQ(recorded().cpuPercentPeak, 30) << "ten seconds exactly are enough";
  EXPECT_EQ(recorded().seconds, 12) << "what was dropped is counted from the last flush";
}

TEST_F(HistoryRecord, TheSamplesOwnTimeIsTheClock) {
  recordLoad(flushTime, 10);
  now += 1000;
  recordLoad(flushTime + 5, 90);
  EXPECT_EQ(recorded().cpuPercentPeak, 10);
}

TEST_F(HistoryRecord, ARestartBeginsAnew) {
  recordLoad(flushTime, 10, 2);
  open();
  recordLoad(flushTime + 1, 30, 2);
  EXPECT_EQ(recorded().seconds, 4);
  EXPECT_EQ(recorded().cpuPercentAvg, 20);
}

TEST_F(HistoryRecord, ASleepOfTwoHoursIsTakenWholeAtTheRatesOfTheTickAfterIt) {
  history().recordSample(sampleAt(flushTime), {groupNamed("Editor")}, 2);
  const double woken = flushTime + 7200;
  SystemSample system = sampleAt(woken);
  system.battery.reset();
  history().recordSample(system, {groupNamed("Editor")}, 7200);

  const auto readings = history().loadReadings(Instant{woken - 300});
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].seconds, 7200);
  EXPECT_EQ(readings[0].pluggedInSeconds, 7200);
  EXPECT_EQ(rows("SELECT active_seconds, cpu_load_seconds, network_bytes_in, energy_joules "
                 "FROM app_hours WHERE bucket_start = 1700006400"),
            (Rows{{"7200.0", "10800.0", "7207128", "18000.0"}}));
}

TEST_F(HistoryRecord, AFlushAtABoundaryOpensANewRowForTheWholeInterval) {
  recordLoad(1'700'000'999, 10);
  recordLoad(1'700'001'009, 30);
  const auto readings = history().loadReadings(Instant{1'700'000'700});
  ASSERT_EQ(readings.size(), 2U);
  EXPECT_EQ(readings[0].start, 1'700'000'700);
  EXPECT_EQ(readings[1].start, 1'700'001'000);
  EXPECT_EQ(readings[1].seconds, 10);
  EXPECT_EQ(readings[1].cpuPercentAvg, 30);
}

TEST_F(HistoryRecord, BucketsAreFiveMinutesAndWholeHours) {
  struct Case {
    double timestamp;
    std::int64_t reading;
    std::int64_t appHour;
  };
  for (const Case& each : {Case{1'700'002'799.999, 1'700'002'500, 1'699'999'200},
                           Case{1'700'002'800, 1'700'002'800, 1'700'002'800},
                           Case{1'700'003'100, 1'700'003'100, 1'700'002'800}}) {
    open().recordSample(sampleAt(each.timestamp), {groupNamed("Bucket")}, 2);
    EXPECT_EQ(number("SELECT MAX(start) FROM readings"), each.reading);
    EXPECT_EQ(number("SELECT MAX(bucket_start) FROM app_hours WHERE name = 'Bucket'"),
              each.appHour);
  }
}

TEST_F(HistoryRecord, WithoutABatteryItIsFullAndPluggedIn) {
  for (int flush = 0; flush < 2; ++flush) {
    SystemSample system = sampleAt(flushTime + 10 * flush);
    system.battery.reset();
    history().recordSample(system, {}, 2);
  }
  EXPECT_EQ(recorded().batteryPercentAvg, 100);
  EXPECT_EQ(recorded().pluggedInSeconds, 12);
  EXPECT_EQ(recorded().seconds, 12);
}

TEST_F(HistoryRecord, ABatteryThatIsNotPluggedInAddsNoSeconds) {
  SystemSample system = sampleAt(flushTime);
  system.battery->isPluggedIn = true;
  history().recordSample(system, {}, 2);
  history().recordSample(sampleAt(flushTime + 10), {}, 2);
  EXPECT_EQ(recorded().pluggedInSeconds, 2);
  EXPECT_EQ(recorded().seconds, 12);
}

TEST_F(HistoryRecord, WithoutFansTheirSpeedIsZero) {
  SystemSample system = sampleAt(flushTime);
  system.thermal.fans.clear();
  history().recordSample(system, {}, 2);
  EXPECT_EQ(recorded().fanRpmAvg, 0);
  EXPECT_EQ(recorded().fanRpmPeak, 0);
}

TEST_F(HistoryRecord, AClockSetBackwardsPausesUntilItHasPassedTheLastFlush) {
  recordLoad(flushTime, 10);
  recordLoad(flushTime - 3600, 90);
  recordLoad(flushTime - 1, 90);
  recordLoad(flushTime + 9, 90);
  EXPECT_EQ(recordedCount(), 1);
  EXPECT_EQ(recorded().cpuPercentPeak, 10);
  recordLoad(flushTime + 10, 30);
  EXPECT_EQ(recorded().cpuPercentPeak, 30);
  EXPECT_EQ(recorded().seconds, 12);
}

TEST_F(HistoryRecord, ATimeBeforeTheFirstTenSecondsOf1970IsDropped) {
  recordLoad(9.9, 10);
  EXPECT_EQ(recordedCount(), 0);
}

TEST_F(HistoryRecord, AnApplicationsFlushIsRateTimesTime) {
  history().recordSample(sampleAt(flushTime), {groupNamed("Editor")}, 2);
  EXPECT_EQ(ledgerOf("Editor"),
            (Rows{{std::to_string(hour), "/Applications/Editor.app", "Editor", "app",
                   "/Applications/Editor.app", "2.0", "3.0", "6000000002.0", "3000000001", "2001",
                   "401", "61", "8", "5.0"}}));
}

TEST_F(HistoryRecord, AnApplicationsFlushesAddUpAndThePeakStays) {
  AppGroup group = groupNamed("Editor");
  history().recordSample(sampleAt(flushTime), {group}, 2);
  group.name = "Editor, renamed";
  group.kind = AppGroupKind::other;
  group.bundlePath = std::nullopt;
  group.memoryBytes = 1'000'000'000;
  history().recordSample(sampleAt(flushTime + 10), {group}, 2);
  EXPECT_EQ(ledgerOf("Editor"),
            (Rows{{std::to_string(hour), "/Applications/Editor.app", "Editor", "app",
                   "/Applications/Editor.app", "12.0", "18.0", "16000000002.0", "3000000001",
                   "12010", "2406", "366", "48", "30.0"}}))
      << "name, kind and bundle path keep their first values";
}

TEST_F(HistoryRecord, KindsAndMissingBundlePathsAreStored) {
  std::vector<AppGroup> groups{groupNamed("a"), groupNamed("b"), groupNamed("c")};
  groups[1].kind = AppGroupKind::system;
  groups[2].kind = AppGroupKind::other;
  groups[2].bundlePath = std::nullopt;
  history().recordSample(sampleAt(flushTime), groups, 2);
  EXPECT_EQ(rows("SELECT name, kind, bundle_path IS NULL FROM app_hours WHERE name < 'd' AND "
                 "name >= 'a' ORDER BY name"),
            (Rows{{"a", "app", "0"}, {"b", "system", "0"}, {"c", "other", "1"}}));
}

TEST_F(HistoryRecord, AnIdleApplicationIsPresentAllTheSame) {
  AppGroup group;
  group.id = "daemon:idle";
  group.name = "idle";
  history().recordSample(sampleAt(flushTime), {group}, 2);
  EXPECT_EQ(value("SELECT active_seconds FROM app_hours WHERE app_id = 'daemon:idle'"), "2.0");
}

TEST_F(HistoryRecord, OfFortyGroupsTheFirst35AreWritten) {
  std::vector<AppGroup> groups;
  for (int index = 0; index < 40; ++index) {
    groups.push_back(groupNamed("Group" + std::to_string(100 + index)));
  }
  history().recordSample(sampleAt(flushTime), groups, 2);
  EXPECT_EQ(value("SELECT COUNT(*) FROM app_hours WHERE name LIKE 'Group%'"), "35");
  EXPECT_EQ(value("SELECT MAX(name) FROM app_hours WHERE name LIKE 'Group%'"), "Group134");
}

TEST_F(HistoryRecord, TextsAreBoundWholeWhateverTheyHold) {
  AppGroup group = groupNamed("x");
  group.id = "daemon:it's \"quoted\"; DROP TABLE readings; --";
  group.name = std::string("zero\0byte", 9) + " \xF0\x9F\x8E\xB5";
  history().recordSample(sampleAt(flushTime), {group}, 2);
  const auto summaries = history().loadAppSummaries(Instant{static_cast<double>(hour)});
  bool isFound = false;
  for (const auto& summary : summaries) {
    if (summary.appID != group.id) continue;
    isFound = true;
    EXPECT_EQ(summary.name, group.name);
  }
  EXPECT_TRUE(isFound);
}

TEST_F(HistoryRecord, FiguresBeyondWhatACellHoldsAreHeldAtItsEnd) {
  SystemSample system = sampleAt(flushTime);
  system.swapUsedBytes = std::numeric_limits<std::uint64_t>::max();
  AppGroup group = groupNamed("Huge");
  group.memoryBytes = std::numeric_limits<std::uint64_t>::max();
  group.networkInBytesPerSec = 1e300;
  group.networkOutBytesPerSec = std::numeric_limits<double>::quiet_NaN();
  group.diskReadBytesPerSec = -1e300;
  history().recordSample(system, {group}, 2);
  EXPECT_EQ(recorded().swapUsedBytesPeak, 9223372036854775807U);
  EXPECT_EQ(rows("SELECT peak_memory_bytes, network_bytes_in, network_bytes_out, disk_bytes_read "
                 "FROM app_hours WHERE name = 'Huge'"),
            (Rows{{"9223372036854775807", "9223372036854775807", "0", "-9223372036854775808"}}));
}

TEST_F(HistoryRecord, AFigureThatIsNoNumberLosesItsRowAndNoOther) {
  SystemSample system = sampleAt(flushTime);
  system.cpuPercent = std::numeric_limits<double>::quiet_NaN();
  std::vector<AppGroup> groups{groupNamed("a"), groupNamed("b")};
  groups[0].energyWatts = std::numeric_limits<double>::quiet_NaN();
  history().recordSample(system, groups, 2);
  EXPECT_EQ(recordedCount(), 0);
  EXPECT_THAT(ledgerOf("a"), IsEmpty());
  EXPECT_EQ(ledgerOf("b").size(), 1U);
}

}  // namespace
}  // namespace korvantis
