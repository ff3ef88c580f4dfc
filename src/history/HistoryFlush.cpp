#include "history/HistoryFlush.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "history/HistoryStatements.h"
#include "history/SQLiteStatement.h"
#include "history/WholeNumbers.h"

namespace korvantis::HistoryFlush {
namespace {

constexpr std::int64_t readingSeconds = 300;
constexpr std::int64_t appHourSeconds = 3600;
constexpr std::size_t mostGroups = 35;

double fastestFan(const std::vector<FanReading>& fans) {
  double fastest = 0;
  for (const FanReading& fan : fans) fastest = std::max(fastest, fan.currentRPM);
  return fastest;
}

/// A flush holds the figures of one moment, so each goes into its average and into its peak.
void bindReading(SQLiteStatement& upsert, const SystemSample& system, std::int64_t bucket,
                 double interval) {
  const ThermalSample& thermal = system.thermal;
  const auto memory = static_cast<double>(system.memoryUsedBytes);
  const double fan = fastestFan(thermal.fans);
  const double battery = system.battery ? system.battery->percentage : 100.0;
  const bool isPluggedIn = !system.battery || system.battery->isPluggedIn;
  upsert.bindAll(bucket, interval, system.cpuPercent, system.cpuPercent, memory, memory,
                 system.memoryPressurePercent, system.memoryPressurePercent,
                 rawValue(system.memoryPressure), signedCount(system.swapUsedBytes),
                 system.gpuPercent, system.gpuPercent, system.neuralEnginePercent,
                 system.neuralEnginePercent, thermal.cpuCelsius, thermal.cpuCelsius,
                 thermal.hottestCelsius, thermal.hottestCelsius, fan, fan, thermal.systemPowerWatts,
                 thermal.systemPowerWatts, thermal.thermalStateLevel, battery,
                 isPluggedIn ? interval : 0.0);
}

void bindAppHour(SQLiteStatement& upsert, const AppGroup& group, std::int64_t bucket,
                 double interval) {
  const auto bytes = [interval](double rate) { return cutTowardZero(interval * rate); };
  upsert.bindAll(bucket, group.id, group.name, std::string(rawValue(group.kind)), group.bundlePath,
                 interval, interval * (group.cpuPercent / 100),
                 interval * static_cast<double>(group.memoryBytes), signedCount(group.memoryBytes),
                 bytes(group.networkInBytesPerSec), bytes(group.networkOutBytesPerSec),
                 bytes(group.diskReadBytesPerSec), bytes(group.diskWriteBytesPerSec),
                 interval * group.energyWatts);
}

void writeReading(const SQLiteConnection& db, const SystemSample& system, std::int64_t bucket,
                  double interval) {
  SQLiteStatement upsert(db, HistoryStatements::upsertReading());
  if (!upsert) return;
  bindReading(upsert, system, bucket, interval);
  upsert.step();
}

void writeAppHours(const SQLiteConnection& db, const std::vector<AppGroup>& appGroups,
                   std::int64_t bucket, double interval) {
  if (appGroups.empty()) return;
  SQLiteStatement upsert(db, HistoryStatements::upsertAppHour());
  if (!upsert) return;
  const std::size_t count = std::min(appGroups.size(), mostGroups);
  for (std::size_t index = 0; index < count; ++index) {
    upsert.reset();
    bindAppHour(upsert, appGroups[index], bucket, interval);
    upsert.step();
  }
}

}  // namespace

void write(const SQLiteConnection& db, const SystemSample& system,
           const std::vector<AppGroup>& appGroups, double interval) {
  const std::int64_t seconds = cutTowardZero(system.timestamp.secondsSince1970);
  db.execute("BEGIN TRANSACTION;");
  writeReading(db, system, bucketStart(seconds, readingSeconds), interval);
  writeAppHours(db, appGroups, bucketStart(seconds, appHourSeconds), interval);
  db.execute("COMMIT;");
}

}  // namespace korvantis::HistoryFlush
