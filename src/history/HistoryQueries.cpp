#include "history/HistoryQueries.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "history/HistoryStatements.h"
#include "history/SQLiteStatement.h"
#include "history/WholeNumbers.h"

namespace korvantis::HistoryQueries {
namespace {

Reading readingOf(const SQLiteStatement& row) {
  return {.start = row.wholeNumber(0),
          .seconds = row.number(1),
          .cpuPercentAvg = row.number(2),
          .cpuPercentPeak = row.number(3),
          .memoryUsedBytesAvg = row.number(4),
          .memoryUsedBytesPeak = row.number(5),
          .memoryPressurePercentAvg = row.number(6),
          .memoryPressurePercentPeak = row.number(7),
          .memoryPressureLevelPeak = row.smallNumber(8),
          .swapUsedBytesPeak = unsignedCount(row.wholeNumber(9)),
          .gpuPercentAvg = row.number(10),
          .gpuPercentPeak = row.number(11),
          .neuralEnginePercentAvg = row.number(12),
          .neuralEnginePercentPeak = row.number(13),
          .cpuCelsiusAvg = row.number(14),
          .cpuCelsiusPeak = row.number(15),
          .hottestCelsiusAvg = row.number(16),
          .hottestCelsiusPeak = row.number(17),
          .fanRpmAvg = row.number(18),
          .fanRpmPeak = row.number(19),
          .powerWattsAvg = row.number(20),
          .powerWattsPeak = row.number(21),
          .thermalStatePeak = row.smallNumber(22),
          .batteryPercentAvg = row.number(23),
          .pluggedInSeconds = row.number(24)};
}

HistoricalAppSummary summaryOf(const SQLiteStatement& row) {
  HistoricalAppSummary summary;
  summary.appID = row.text(0).value_or("unknown");
  summary.name = row.text(1).value_or(summary.appID);
  summary.kind = row.text(2).value_or("app");
  summary.bundlePath = row.text(3);
  summary.activeSeconds = row.number(4);
  summary.cpuLoadSeconds = row.number(5);
  summary.memoryByteSeconds = row.number(6);
  summary.peakMemoryBytes = unsignedCount(row.wholeNumber(7));
  summary.networkBytesIn = unsignedCount(row.wholeNumber(8));
  summary.networkBytesOut = unsignedCount(row.wholeNumber(9));
  summary.diskBytesRead = unsignedCount(row.wholeNumber(10));
  summary.diskBytesWritten = unsignedCount(row.wholeNumber(11));
  summary.energyJoules = row.number(12);
  return summary;
}

/// How many readings a range can hold, a year's at most: with room for them the list is not copied
/// while it grows. Memory that stays unused is only addresses.
std::size_t mostReadings(std::int64_t sinceSeconds, std::int64_t nowSeconds) {
  constexpr double readingSeconds = 300;
  constexpr double yearOfReadings = 366 * 86400 / readingSeconds;
  const double range = static_cast<double>(nowSeconds) - static_cast<double>(sinceSeconds);
  return static_cast<std::size_t>(std::clamp(range / readingSeconds + 1, 0.0, yearOfReadings));
}

}  // namespace

std::vector<Reading> readings(const SQLiteConnection& db, std::int64_t sinceSeconds,
                              std::int64_t nowSeconds) {
  std::vector<Reading> rows;
  SQLiteStatement select(db, HistoryStatements::selectReadings());
  if (!select) return rows;
  rows.reserve(mostReadings(sinceSeconds, nowSeconds));
  select.bindAll(sinceSeconds);
  while (select.step()) rows.push_back(readingOf(select));
  return rows;
}

std::vector<HistoricalAppSummary> appSummaries(const SQLiteConnection& db,
                                               std::int64_t sinceSeconds) {
  std::vector<HistoricalAppSummary> rows;
  SQLiteStatement select(db, HistoryStatements::selectAppSummaries());
  if (!select) return rows;
  select.bindAll(sinceSeconds);
  while (select.step()) rows.push_back(summaryOf(select));
  return rows;
}

}  // namespace korvantis::HistoryQueries
