#include "pictures/SampleHistory.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "pictures/SampleApplications.h"

namespace korvantis::pictures {
namespace {

constexpr std::int64_t bucketSeconds = 300;
constexpr double gigabyte = 1024.0 * 1024 * 1024;

/// The same for the same bucket in every run, 0 to 1.
double noise(std::int64_t bucket, unsigned salt) {
  auto mixed = static_cast<std::uint64_t>(bucket) * 0x9E3779B97F4A7C15ULL + salt * 0xBF58476DULL;
  mixed ^= mixed >> 29U;
  mixed *= 0x94D049BB133111EBULL;
  return static_cast<double>(mixed >> 40U) / static_cast<double>(1U << 24U);
}

/// How busy the day is at that time: 0 at night, 1 in the afternoon.
double business(std::int64_t start) {
  const double hour = static_cast<double>(start % 86400) / 3600.0;
  return std::max(0.0, std::sin((hour - 6.5) / 15.0 * 3.14159265));
}

Reading reading(std::int64_t start) {
  const std::int64_t bucket = start / bucketSeconds;
  const double busy = business(start);
  Reading row;
  row.start = start;
  row.cpuPercentAvg = 4 + 26 * busy + 14 * busy * noise(bucket, 1);
  row.cpuPercentPeak = std::min(100.0, row.cpuPercentAvg + 8 + 50 * busy * noise(bucket, 2));
  row.memoryUsedBytesAvg = (11 + 9 * busy + noise(bucket, 3)) * gigabyte;
  row.memoryUsedBytesPeak = row.memoryUsedBytesAvg + 1.6 * busy * gigabyte;
  row.memoryPressurePercentAvg = 14 + 22 * busy + 6 * noise(bucket, 4);
  row.memoryPressurePercentPeak = row.memoryPressurePercentAvg + 11 * busy;
  row.swapUsedBytesPeak = static_cast<std::uint64_t>(0.4 * busy * gigabyte);
  row.gpuPercentAvg = 3 + 17 * busy * noise(bucket, 5);
  row.gpuPercentPeak = row.gpuPercentAvg + 24 * busy;
  row.neuralEnginePercentAvg = 4 * busy * noise(bucket, 6);
  row.neuralEnginePercentPeak = row.neuralEnginePercentAvg + 12 * busy;
  row.cpuCelsiusAvg = 41 + 21 * busy + 4 * noise(bucket, 7);
  row.cpuCelsiusPeak = row.cpuCelsiusAvg + 9 * busy;
  row.hottestCelsiusAvg = row.cpuCelsiusAvg + 3;
  row.hottestCelsiusPeak = row.cpuCelsiusPeak + 4;
  row.fanRpmAvg = 1300 + 1700 * busy;
  row.fanRpmPeak = row.fanRpmAvg + 600 * busy;
  row.powerWattsAvg = 7 + 21 * busy + 5 * noise(bucket, 8);
  row.powerWattsPeak = row.powerWattsAvg + 14 * busy;
  row.batteryPercentAvg = 92 - 30 * busy;
  row.pluggedInSeconds = static_cast<double>(bucketSeconds);
  return row;
}

}  // namespace

std::vector<Reading> sampleReadings(Instant since) {
  const auto now = static_cast<std::int64_t>(Instant::now().secondsSince1970);
  const auto first = static_cast<std::int64_t>(since.secondsSince1970) / bucketSeconds;
  std::vector<Reading> rows;
  for (std::int64_t start = first * bucketSeconds; start < now; start += bucketSeconds) {
    rows.push_back(reading(start));
  }
  return rows;
}

std::vector<HistoricalAppSummary> sampleLedger(const std::string& folder) {
  std::vector<HistoricalAppSummary> ledger;
  for (const AppGroup& group : sampleApplications(folder, 0)) {
    const double hours = 3600.0 * (4 + 2.5 * group.memoryPercent);
    HistoricalAppSummary row;
    row.appID = group.id;
    row.name = group.name;
    row.kind = std::string(rawValue(group.kind));
    row.bundlePath = group.bundlePath;
    row.activeSeconds = hours;
    row.cpuLoadSeconds = hours * group.cpuPercent / 100;
    row.memoryByteSeconds = hours * static_cast<double>(group.memoryBytes);
    row.peakMemoryBytes = group.memoryBytes + group.memoryBytes / 3;
    row.networkBytesIn = static_cast<std::uint64_t>(group.networkInBytesPerSec * hours / 9);
    row.networkBytesOut = row.networkBytesIn / 5;
    row.diskBytesRead = static_cast<std::uint64_t>(hours * 60000);
    row.diskBytesWritten = row.diskBytesRead / 2;
    row.energyJoules = group.energyWatts * hours;
    ledger.push_back(row);
  }
  std::stable_sort(ledger.begin(), ledger.end(),
                   [](const HistoricalAppSummary& first, const HistoricalAppSummary& second) {
                     return first.energyJoules > second.energyJoules;
                   });
  return ledger;
}

}  // namespace korvantis::pictures
