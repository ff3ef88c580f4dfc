#include "history/HistorySeed.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "history/HistoryStatements.h"
#include "history/SQLiteStatement.h"
#include "history/WholeNumbers.h"

namespace korvantis::HistorySeed {
namespace {

constexpr std::int64_t stepSeconds = 900;
constexpr std::int64_t hourSeconds = 3600;
constexpr std::int64_t daySeconds = 86400;
constexpr int weekSteps = 672;
constexpr int seededDays = 7;
constexpr std::int64_t mebibyte = 1048576;
constexpr std::int64_t swapUsedBytes = 268435456;

/// One invented application: its figures of an hour, sizes in megabytes.
struct SeededApp {
  std::string bundlePath;
  std::string name;
  double cpuLoadSeconds;
  std::int64_t memory;
  std::int64_t network;
  std::int64_t disk;
  double energyJoules;
};

std::array<SeededApp, 5> seededApps() {
  return {{{"/Applications/Xcode.app", "Xcode", 1420, 3480, 420, 2840, 18400},
           {"/Applications/Safari.app", "Safari", 840, 2150, 1680, 920, 9600},
           {"/Applications/Cursor.app", "Cursor", 1120, 2640, 540, 1310, 13200},
           {"/System/Applications/Utilities/Terminal.app", "Terminal", 620, 780, 290, 640, 5400},
           {"/System/Library/CoreServices/Finder.app", "Finder", 190, 410, 45, 310, 2100}}};
}

/// The row that lies `i` quarters of an hour before `base`: slow waves with a spike at every 23rd.
void bindReading(SQLiteStatement& insert, std::int64_t base, int i, double physical) {
  const double wave = (std::sin(i * 0.14) + 1) * 0.5;
  const double spike = i % 23 == 0 ? 28 : 0;
  const bool everySeventh = i % 7 == 0;
  const double cpu = spike * 0.5 + wave * 24 + 14;
  const double memory = (wave * 0.18 + 0.54) * physical;
  const double pressure = wave * 18 + 14;
  const double gpu = wave * 19 + 8;
  const double cpuCelsius = spike * 0.25 + wave * 12.5 + 43;
  const double cpuCelsiusPeak = cpuCelsius + 4.5;
  const double hottest = cpuCelsius + 2.2;
  const double hottestPeak = cpuCelsiusPeak + 3;
  const double watts = spike * 0.2 + wave * 11.5 + 7.2;
  insert.bindAll(base - i * stepSeconds, 900.0, cpu, std::min(98.0, spike + cpu + 18), memory,
                 std::min(memory * 1.08, physical * 0.92), pressure, pressure + 8, 1, swapUsedBytes,
                 gpu, std::min(95.0, gpu + 16), everySeventh ? 22.0 : 2.5,
                 everySeventh ? 48.0 : 6.0, cpuCelsius, cpuCelsiusPeak, hottest, hottestPeak,
                 hottest > 55 ? 1850.0 : 0.0, hottestPeak > 58 ? 2400.0 : 0.0, watts, watts + 6.4,
                 0, wave * 21 + 78, 900.0);
}

void bindAppHour(SQLiteStatement& replace, std::int64_t bucket, const SeededApp& app) {
  constexpr double activeSeconds = 7200;
  const std::int64_t memoryBytes = app.memory * mebibyte;
  replace.bindAll(bucket, app.bundlePath, app.name, app.bundlePath, activeSeconds,
                  app.cpuLoadSeconds, static_cast<double>(memoryBytes) * activeSeconds, memoryBytes,
                  app.network * mebibyte, app.network / 3 * mebibyte, app.disk * mebibyte,
                  app.disk / 2 * mebibyte, app.energyJoules);
}

void writeReadings(const SQLiteConnection& db, std::int64_t base, double physicalMemory) {
  SQLiteStatement insert(db, HistoryStatements::insertSeedReading());
  if (!insert) return;
  for (int i = weekSteps; i >= 1; --i) {
    insert.reset();
    bindReading(insert, base, i, physicalMemory);
    insert.step();
  }
}

void writeAppHours(const SQLiteConnection& db, std::int64_t base) {
  SQLiteStatement replace(db, HistoryStatements::replaceSeedAppHour());
  if (!replace) return;
  const std::int64_t hour = bucketStart(base, hourSeconds);
  const auto apps = seededApps();
  for (int day = 0; day < seededDays; ++day) {
    for (const SeededApp& app : apps) {
      replace.reset();
      bindAppHour(replace, hour - day * daySeconds, app);
      replace.step();
    }
  }
}

}  // namespace

void write(const SQLiteConnection& db, std::int64_t nowSeconds, double physicalMemory) {
  const std::int64_t base = bucketStart(nowSeconds, stepSeconds);
  db.execute("BEGIN TRANSACTION;");
  writeReadings(db, base, physicalMemory);
  writeAppHours(db, base);
  db.execute("COMMIT;");
}

}  // namespace korvantis::HistorySeed
