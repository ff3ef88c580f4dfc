// What the history costs beside its floor, both in turns within one run: a flush of 36 rows beside
// the same statements in plain C, a year of readings read beside plain stepping through its
// columns, and the CSV files of that year beside the sqlite3 tool's own dump of the table. All
// times are CPU time; "ratio" is ours over the floor.

#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <spawn.h>
#include <sqlite3.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <vector>

#include "history/HistoryDatabase.h"
#include "history/HistoryStatements.h"
#include "platform/PlatformCalls.h"
#include "support/PrivateFolders.h"

namespace korvantis {
namespace {

constexpr int yearRows = 105'120;
constexpr std::int64_t yearBegin = 1'700'000'100;

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// CPU time of this process, or of the children that have ended, in seconds.
double cpuSeconds(int who) {
  if (who == RUSAGE_SELF) {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  }
  rusage usage{};
  getrusage(who, &usage);
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double costOf(const std::function<void()>& work, int who = RUSAGE_SELF) {
  const double before = cpuSeconds(who);
  work();
  return cpuSeconds(who) - before;
}

/// Measures both in turns, each first as often as the other.
void besideFloor(benchmark::State& state, const std::function<void()>& ours,
                 const std::function<void()>& floor, int whoseFloor = RUSAGE_SELF) {
  ours();
  floor();
  double oursTotal = 0;
  double floorTotal = 0;
  bool isOursFirst = true;
  for ([[maybe_unused]] auto iteration : state) {
    if (!isOursFirst) floorTotal += costOf(floor, whoseFloor);
    const double cost = costOf(ours);
    if (isOursFirst) floorTotal += costOf(floor, whoseFloor);
    isOursFirst = !isOursFirst;
    oursTotal += cost;
    state.SetIterationTime(cost);
  }
  const auto count = static_cast<double>(state.iterations());
  state.counters["ours_ms"] = oursTotal / count * 1e3;
  state.counters["floor_ms"] = floorTotal / count * 1e3;
  state.counters["ratio"] = oursTotal / floorTotal;
}

/// A history in a folder of its own, and a plain connection to another file shaped alike.
struct Histories {
  PlatformCalls platform = [] {
    PlatformCalls calls = systemPlatformCalls();
    test::usePrivateFolders(calls);
    return calls;
  }();
  HistoryDatabase history{platform};
  sqlite3* plain = nullptr;

  Histories() {
    const std::string path = history.databasePath() + ".plain";
    sqlite3_open(path.c_str(), &plain);
    execute("PRAGMA journal_mode = WAL;");
    execute("PRAGMA synchronous = NORMAL;");
    execute(HistoryStatements::schema().c_str());
  }
  Histories(const Histories&) = delete;
  Histories& operator=(const Histories&) = delete;
  ~Histories() { sqlite3_close(plain); }

  void execute(const char* sql) const { sqlite3_exec(plain, sql, nullptr, nullptr, nullptr); }
};

std::vector<AppGroup> thirtyFiveGroups() {
  std::vector<AppGroup> groups(35);
  for (std::size_t index = 0; index < groups.size(); ++index) {
    AppGroup& group = groups[index];
    group.name = "Application " + std::to_string(index);
    group.id = "/Applications/" + group.name + ".app";
    group.bundlePath = group.id;
    group.cpuPercent = static_cast<double>(index);
    group.memoryBytes = (index + 1) << 24U;
    group.networkInBytesPerSec = 1234.5;
    group.diskWriteBytesPerSec = 99.25;
    group.energyWatts = 0.75;
  }
  return groups;
}

/// A reading as plain C has it: what a flush binds, one after the other.
void plainReading(sqlite3* db, std::int64_t ts, double interval, const SystemSample& system) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db, HistoryStatements::upsertReading().c_str(), -1, &statement, nullptr);
  const double memory = static_cast<double>(system.memoryUsedBytes);
  const std::array<double, 25> values{0,
                                      interval,
                                      system.cpuPercent,
                                      system.cpuPercent,
                                      memory,
                                      memory,
                                      system.memoryPressurePercent,
                                      system.memoryPressurePercent,
                                      0,
                                      0,
                                      system.gpuPercent,
                                      system.gpuPercent,
                                      system.neuralEnginePercent,
                                      system.neuralEnginePercent,
                                      system.thermal.cpuCelsius,
                                      system.thermal.cpuCelsius,
                                      system.thermal.hottestCelsius,
                                      system.thermal.hottestCelsius,
                                      0,
                                      0,
                                      system.thermal.systemPowerWatts,
                                      system.thermal.systemPowerWatts,
                                      0,
                                      100,
                                      interval};
  for (int index = 0; index < 25; ++index) {
    const bool isWhole = index == 0 || index == 8 || index == 9 || index == 22;
    if (isWhole)
      sqlite3_bind_int64(statement, index + 1, index == 0 ? ts / 300 * 300 : 1);
    else
      sqlite3_bind_double(statement, index + 1, values[static_cast<std::size_t>(index)]);
  }
  sqlite3_step(statement);
  sqlite3_finalize(statement);
}

void plainAppHours(sqlite3* db, std::int64_t ts, double interval,
                   const std::vector<AppGroup>& groups) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db, HistoryStatements::upsertAppHour().c_str(), -1, &statement, nullptr);
  const auto bindText = [&](int index, const std::string& text) {
    sqlite3_bind_text(statement, index, text.c_str(), -1, SQLITE_TRANSIENT);
  };
  for (const AppGroup& group : groups) {
    sqlite3_reset(statement);
    sqlite3_bind_int64(statement, 1, ts / 3600 * 3600);
    bindText(2, group.id);
    bindText(3, group.name);
    sqlite3_bind_text(statement, 4, "app", -1, SQLITE_TRANSIENT);
    bindText(5, *group.bundlePath);
    sqlite3_bind_double(statement, 6, interval);
    sqlite3_bind_double(statement, 7, interval * group.cpuPercent / 100);
    sqlite3_bind_double(statement, 8, interval * static_cast<double>(group.memoryBytes));
    sqlite3_bind_int64(statement, 9, static_cast<sqlite3_int64>(group.memoryBytes));
    for (int index = 10; index <= 13; ++index) sqlite3_bind_int64(statement, index, 12345);
    sqlite3_bind_double(statement, 14, interval * group.energyWatts);
    sqlite3_step(statement);
  }
  sqlite3_finalize(statement);
}

void flush(benchmark::State& state) {
  Histories histories;
  const std::vector<AppGroup> groups = thirtyFiveGroups();
  SystemSample system;
  double ours = 1'800'000'000;
  std::int64_t plain = 1'800'000'000;
  besideFloor(
      state,
      [&] {
        system.timestamp = Instant{ours += 10};
        histories.history.recordSample(system, groups, 10);
      },
      [&] {
        plain += 10;
        histories.execute("BEGIN TRANSACTION;");
        plainReading(histories.plain, plain, 10, system);
        plainAppHours(histories.plain, plain, 10, groups);
        histories.execute("COMMIT;");
      });
}
BENCHMARK(flush)
    ->Name("History/flush of 36 rows")
    ->UseManualTime()
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

/// The history of a year: one row for each five minutes, with figures that have all their digits.
void fillYear(const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  sqlite3_exec(db, "DELETE FROM readings; BEGIN;", nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(db, HistoryStatements::insertSeedReading().c_str(), -1, &insert, nullptr);
  for (int row = 0; row < yearRows; ++row) {
    sqlite3_reset(insert);
    sqlite3_bind_int64(insert, 1, yearBegin + 300LL * row);
    for (int column = 2; column <= 25; ++column) {
      const bool isMemory = column == 5 || column == 6;
      const double figure = static_cast<double>((row * 31 + column * 977) % 9973) / 99.73;
      const bool isWhole = column == 9 || column == 10 || column == 23;
      if (isWhole)
        sqlite3_bind_int64(insert, column, 1);
      else
        sqlite3_bind_double(insert, column, isMemory ? figure * 1.7e8 : figure);
    }
    sqlite3_step(insert);
  }
  sqlite3_finalize(insert);
  sqlite3_exec(db, "COMMIT; PRAGMA wal_checkpoint(TRUNCATE);", nullptr, nullptr, nullptr);
  sqlite3_close(db);
}

void plainRead(sqlite3* db) {
  sqlite3_stmt* select = nullptr;
  sqlite3_prepare_v2(db, HistoryStatements::selectReadings().c_str(), -1, &select, nullptr);
  sqlite3_bind_int64(select, 1, 0);
  double sum = 0;
  while (sqlite3_step(select) == SQLITE_ROW) {
    for (int column = 0; column < 25; ++column) {
      const bool isWhole = column == 0 || column == 8 || column == 9 || column == 22;
      sum += isWhole ? static_cast<double>(sqlite3_column_int64(select, column))
                     : sqlite3_column_double(select, column);
    }
  }
  benchmark::DoNotOptimize(sum);
  sqlite3_finalize(select);
}

void readYear(benchmark::State& state) {
  Histories histories;
  fillYear(histories.history.databasePath());
  sqlite3* db = nullptr;
  sqlite3_open(histories.history.databasePath().c_str(), &db);
  std::size_t rows = 0;
  besideFloor(
      state, [&] { rows = histories.history.loadReadings(Instant{0}).size(); },
      [&] { plainRead(db); });
  sqlite3_close(db);
  state.counters["rows"] = static_cast<double>(rows);
}
BENCHMARK(readYear)
    ->Name("History/a year read")
    ->UseManualTime()
    ->MinTime(3)
    ->Unit(benchmark::kMillisecond);

/// The tool writes the whole table into a file, as our export does.
void dumpWithTool(const std::string& database, const std::string& file) {
  const std::string command =
      "exec sqlite3 -csv -header '" + database + "' 'SELECT * FROM readings;' > '" + file + "'";
  std::array<const char*, 4> words{"sh", "-c", command.c_str(), nullptr};
  pid_t pid = -1;
  if (posix_spawn(&pid, "/bin/sh", nullptr, nullptr, const_cast<char**>(words.data()), environ) ==
      0) {
    waitpid(pid, nullptr, 0);
  }
}

void exportYear(benchmark::State& state) {
  if (std::system("command -v sqlite3 >/dev/null") != 0) {
    state.SkipWithError("the sqlite3 tool is missing");
    return;
  }
  Histories histories;
  const std::string path = histories.history.databasePath();
  fillYear(path);
  besideFloor(
      state,
      [&] {
        const auto files = histories.history.exportCSVToDownloads(Instant{0});
        if (!files.readingsURL) state.SkipWithError("the export failed");
      },
      [&] { dumpWithTool(path, path + ".csv"); }, RUSAGE_CHILDREN);
}
BENCHMARK(exportYear)
    ->Name("History/CSV of a year")
    ->UseManualTime()
    ->MinTime(3)
    ->Unit(benchmark::kMillisecond);

/// What the history adds to the start of the program: the first one of all, and one with a year in
/// the file.
void startWithYear(benchmark::State& state) {
  const Histories histories;
  fillYear(histories.history.databasePath());
  for ([[maybe_unused]] auto iteration : state) HistoryDatabase(histories.platform);
}
BENCHMARK(startWithYear)->Name("History/start with a year")->Unit(benchmark::kMillisecond);

void firstStart(benchmark::State& state) {
  for ([[maybe_unused]] auto iteration : state) {
    state.PauseTiming();
    PlatformCalls platform = systemPlatformCalls();
    test::usePrivateFolders(platform);
    state.ResumeTiming();
    HistoryDatabase history(platform);
    state.PauseTiming();
    benchmark::DoNotOptimize(history.databasePath().data());
    state.ResumeTiming();
  }
}
BENCHMARK(firstStart)->Name("History/first start")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace korvantis
