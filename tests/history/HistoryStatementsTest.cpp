#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "history/HistoryFixture.h"
#include "history/TracedStatements.h"

namespace korvantis {
namespace {

using test::groupNamed;
using test::HistoryTest;
using test::Rows;
using test::sampleAt;
using test::TracedStatements;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

const std::string readingColumns =
    "start, seconds, cpu_percent_avg, cpu_percent_peak, memory_used_bytes_avg, "
    "memory_used_bytes_peak, memory_pressure_percent_avg, memory_pressure_percent_peak, "
    "memory_pressure_level_peak, swap_used_bytes_peak, gpu_percent_avg, gpu_percent_peak, "
    "neural_engine_percent_avg, neural_engine_percent_peak, cpu_celsius_avg, cpu_celsius_peak, "
    "hottest_celsius_avg, hottest_celsius_peak, fan_rpm_avg, fan_rpm_peak, power_watts_avg, "
    "power_watts_peak, thermal_state_peak, battery_percent_avg, plugged_in_seconds";
const std::string appColumns =
    "bucket_start, app_id, name, kind, bundle_path, active_seconds, cpu_load_seconds, "
    "memory_byte_seconds, peak_memory_bytes, network_bytes_in, network_bytes_out, "
    "disk_bytes_read, disk_bytes_written, energy_joules";
const std::string fourteen = "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?";
const std::string twentyFive = fourteen + ", ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?";

const std::string upsertReading =
    "INSERT INTO readings (" + readingColumns + ") VALUES (" + twentyFive +
    ") ON CONFLICT(start) DO UPDATE SET "
    "seconds = readings.seconds + excluded.seconds, "
    "cpu_percent_avg = (readings.cpu_percent_avg + excluded.cpu_percent_avg) * 0.5, "
    "cpu_percent_peak = MAX(readings.cpu_percent_peak, excluded.cpu_percent_peak), "
    "memory_used_bytes_avg = "
    "(readings.memory_used_bytes_avg + excluded.memory_used_bytes_avg) * 0.5, "
    "memory_used_bytes_peak = "
    "MAX(readings.memory_used_bytes_peak, excluded.memory_used_bytes_peak), "
    "memory_pressure_percent_avg = "
    "(readings.memory_pressure_percent_avg + excluded.memory_pressure_percent_avg) * 0.5, "
    "memory_pressure_percent_peak = "
    "MAX(readings.memory_pressure_percent_peak, excluded.memory_pressure_percent_peak), "
    "memory_pressure_level_peak = "
    "MAX(readings.memory_pressure_level_peak, excluded.memory_pressure_level_peak), "
    "swap_used_bytes_peak = MAX(readings.swap_used_bytes_peak, excluded.swap_used_bytes_peak), "
    "gpu_percent_avg = (readings.gpu_percent_avg + excluded.gpu_percent_avg) * 0.5, "
    "gpu_percent_peak = MAX(readings.gpu_percent_peak, excluded.gpu_percent_peak), "
    "neural_engine_percent_avg = "
    "(readings.neural_engine_percent_avg + excluded.neural_engine_percent_avg) * 0.5, "
    "neural_engine_percent_peak = "
    "MAX(readings.neural_engine_percent_peak, excluded.neural_engine_percent_peak), "
    "cpu_celsius_avg = (readings.cpu_celsius_avg + excluded.cpu_celsius_avg) * 0.5, "
    "cpu_celsius_peak = MAX(readings.cpu_celsius_peak, excluded.cpu_celsius_peak), "
    "hottest_celsius_avg = (readings.hottest_celsius_avg + excluded.hottest_celsius_avg) * 0.5, "
    "hottest_celsius_peak = MAX(readings.hottest_celsius_peak, excluded.hottest_celsius_peak), "
    "fan_rpm_avg = (readings.fan_rpm_avg + excluded.fan_rpm_avg) * 0.5, "
    "fan_rpm_peak = MAX(readings.fan_rpm_peak, excluded.fan_rpm_peak), "
    "power_watts_avg = (readings.power_watts_avg + excluded.power_watts_avg) * 0.5, "
    "power_watts_peak = MAX(readings.power_watts_peak, excluded.power_watts_peak), "
    "thermal_state_peak = MAX(readings.thermal_state_peak, excluded.thermal_state_peak), "
    "battery_percent_avg = (readings.battery_percent_avg + excluded.battery_percent_avg) * 0.5, "
    "plugged_in_seconds = readings.plugged_in_seconds + excluded.plugged_in_seconds;";

const std::string upsertAppHour =
    "INSERT INTO app_hours (" + appColumns + ") VALUES (" + fourteen +
    ") ON CONFLICT(bucket_start, app_id) DO UPDATE SET "
    "active_seconds = app_hours.active_seconds + excluded.active_seconds, "
    "cpu_load_seconds = app_hours.cpu_load_seconds + excluded.cpu_load_seconds, "
    "memory_byte_seconds = app_hours.memory_byte_seconds + excluded.memory_byte_seconds, "
    "peak_memory_bytes = MAX(app_hours.peak_memory_bytes, excluded.peak_memory_bytes), "
    "network_bytes_in = app_hours.network_bytes_in + excluded.network_bytes_in, "
    "network_bytes_out = app_hours.network_bytes_out + excluded.network_bytes_out, "
    "disk_bytes_read = app_hours.disk_bytes_read + excluded.disk_bytes_read, "
    "disk_bytes_written = app_hours.disk_bytes_written + excluded.disk_bytes_written, "
    "energy_joules = app_hours.energy_joules + excluded.energy_joules;";

const std::string seedReading =
    "INSERT OR IGNORE INTO readings (" + readingColumns + ") VALUES (" + twentyFive + ");";
const std::string seedAppHour = "INSERT OR REPLACE INTO app_hours (" + appColumns +
                                ") VALUES (?, ?, ?, 'app', ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);";

class HistoryStatements : public HistoryTest {
 protected:
  TracedStatements traced;

  void TearDown() override { close(); }
};

TEST_F(HistoryStatements, OfAnOpenOfAnEstablishedDatabase) {
  open();
  close();
  traced.take();

  open();

  const auto texts = traced.take();
  ASSERT_EQ(texts.size(), 10U);
  EXPECT_EQ(texts[0], "PRAGMA journal_mode = WAL;");
  EXPECT_EQ(texts[1], "PRAGMA synchronous = NORMAL;");
  const char* tables[] = {
      "meta", "readings", "system_five_minutes", "system_hours", "app_hours", "app_days", "recent"};
  for (std::size_t index = 0; index < 7; ++index) {
    EXPECT_THAT(texts[2 + index],
                StartsWith(std::string("CREATE TABLE IF NOT EXISTS ") + tables[index] + " ("));
  }
  EXPECT_EQ(texts[9], "SELECT COUNT(*) FROM readings;");
}

TEST_F(HistoryStatements, OfTheSeed) {
  open();
  auto texts = traced.take();
  const auto begin = std::ranges::find(texts, "BEGIN TRANSACTION;");
  ASSERT_EQ(texts.end() - begin, 1 + 672 + 35 + 1);
  EXPECT_EQ(*(begin - 1), "SELECT COUNT(*) FROM readings;");
  EXPECT_THAT(std::vector<std::string>(begin + 1, begin + 673), Each(seedReading));
  EXPECT_THAT(std::vector<std::string>(begin + 673, begin + 708), Each(seedAppHour));
  EXPECT_EQ(texts.back(), "COMMIT;");
}

TEST_F(HistoryStatements, OfAFlush) {
  open();
  traced.take();
  history().recordSample(sampleAt(now), {groupNamed("a"), groupNamed("b")}, 2);
  EXPECT_THAT(traced.take(), ElementsAre("BEGIN TRANSACTION;", upsertReading, upsertAppHour,
                                         upsertAppHour, "COMMIT;"));
}

TEST_F(HistoryStatements, OfAFlushOfFortyGroupsAre36Upserts) {
  open();
  traced.take();
  std::vector<AppGroup> groups;
  for (int index = 0; index < 40; ++index) groups.push_back(groupNamed(std::to_string(index)));
  history().recordSample(sampleAt(now), groups, 2);
  EXPECT_EQ(traced.take().size(), 2U + 36U);
}

TEST_F(HistoryStatements, OfAFlushWithoutGroupsLeaveTheLedgerAlone) {
  open();
  traced.take();
  history().recordSample(sampleAt(now), {}, 2);
  EXPECT_THAT(traced.take(), ElementsAre("BEGIN TRANSACTION;", upsertReading, "COMMIT;"));
}

TEST_F(HistoryStatements, OfAFlushThatFailsAreStillCommitted) {
  open();
  close();
  rows("ALTER TABLE readings DROP COLUMN gpu_percent_avg;");
  open();
  traced.take();
  history().recordSample(sampleAt(now), {groupNamed("a")}, 2);
  EXPECT_THAT(traced.take(), ElementsAre("BEGIN TRANSACTION;", upsertAppHour, "COMMIT;"));

  close();
  rows("ALTER TABLE app_hours DROP COLUMN energy_joules;");
  open();
  traced.take();
  history().recordSample(sampleAt(now + 10), {groupNamed("a")}, 2);
  EXPECT_THAT(traced.take(), ElementsAre("BEGIN TRANSACTION;", "COMMIT;"));
}

TEST_F(HistoryStatements, OfADroppedTickAreNone) {
  history().recordSample(sampleAt(now), {groupNamed("a")}, 2);
  traced.take();
  history().recordSample(sampleAt(now + 9.99), {groupNamed("a")}, 2);
  EXPECT_THAT(traced.take(), IsEmpty());
}

TEST_F(HistoryStatements, OfTheQueries) {
  open();
  traced.take();
  history().loadReadings(Instant{0});
  history().loadAppSummaries(Instant{0});
  EXPECT_THAT(
      traced.take(),
      ElementsAre(
          "SELECT " + readingColumns + "\nFROM readings\nWHERE start >= ?\nORDER BY start ASC;",
          "SELECT app_id, MAX(name), MAX(kind), MAX(bundle_path), SUM(active_seconds), "
          "SUM(cpu_load_seconds), SUM(memory_byte_seconds), MAX(peak_memory_bytes), "
          "SUM(network_bytes_in), SUM(network_bytes_out), SUM(disk_bytes_read), "
          "SUM(disk_bytes_written), SUM(energy_joules)\nFROM app_hours\nWHERE bucket_start >= ?\n"
          "GROUP BY app_id\nORDER BY SUM(energy_joules) DESC, MAX(peak_memory_bytes) DESC\n"
          "LIMIT 50;"));
}

TEST_F(HistoryStatements, NoneIsKeptPrepared) {
  open();
  EXPECT_EQ(traced.preparedCount(), 0);
  history().recordSample(sampleAt(now), {groupNamed("a")}, 2);
  EXPECT_EQ(traced.preparedCount(), 0);
  history().loadReadings(Instant{0});
  history().loadAppSummaries(Instant{0});
  EXPECT_EQ(traced.preparedCount(), 0);
}

TEST_F(HistoryStatements, NothingIsEverPrunedRolledUpOrMigrated) {
  open();
  close();
  rows(
      "INSERT INTO readings VALUES (300,300,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1);"
      "INSERT INTO app_hours VALUES (0, 'old', 'Old', 'app', NULL, 1,1,1,1,1,1,1,1,1);"
      "INSERT INTO meta VALUES ('schema', '7');"
      "INSERT INTO recent VALUES ('old', 'Old', NULL, 1, 1);"
      "PRAGMA user_version = 42;");
  traced.take();

  // Three years, with a start a month.
  for (int month = 0; month < 36; ++month) {
    for (int flush = 0; flush < 10; ++flush) {
      const double time = now + month * 2'592'000.0 + flush * 3'600.0;
      history().recordSample(sampleAt(time), {groupNamed("Editor")}, 2);
    }
    history().loadReadings(Instant{0});
    history().loadAppSummaries(Instant{0});
    open();
  }
  close();

  const auto texts = traced.take();
  for (const char* verb : {"DELETE", "UPDATE", "ALTER", "DROP", "VACUUM", "REINDEX", "REPLACE"}) {
    EXPECT_THAT(texts, Not(Contains(StartsWith(verb)))) << verb;
  }
  EXPECT_EQ(value("SELECT COUNT(*) FROM readings"), "1033");
  EXPECT_EQ(value("SELECT COUNT(*) FROM app_hours"), "396");
  for (const char* table : {"system_five_minutes", "system_hours", "app_days"}) {
    EXPECT_EQ(value(std::string("SELECT COUNT(*) FROM ") + table), "0") << table;
  }
  EXPECT_EQ(rows("SELECT * FROM meta"), (Rows{{"schema", "7"}}));
  EXPECT_EQ(rows("SELECT * FROM recent"), (Rows{{"old", "Old", "NULL", "1", "1"}}));
  EXPECT_EQ(value("PRAGMA user_version"), "42");
  EXPECT_EQ(value("SELECT COUNT(*) FROM readings WHERE start = 300"), "1");
  EXPECT_EQ(value("SELECT COUNT(*) FROM app_hours WHERE app_id = 'old'"), "1");
}

}  // namespace
}  // namespace korvantis
