#include "ui/panes/HistoryFigures.h"

#include <algorithm>

namespace korvantis::HistoryFigures {

namespace {

/// Where a reading keeps the average and the peak of a metric.
struct Columns {
  double Reading::*average;
  double Reading::*peak;
};

Columns columnsOf(HistoryMetricKind metric) {
  switch (metric) {
    case HistoryMetricKind::cpu: return {&Reading::cpuPercentAvg, &Reading::cpuPercentPeak};
    case HistoryMetricKind::memory:
      return {&Reading::memoryUsedBytesAvg, &Reading::memoryUsedBytesPeak};
    case HistoryMetricKind::gpu: return {&Reading::gpuPercentAvg, &Reading::gpuPercentPeak};
    case HistoryMetricKind::neuralEngine:
      return {&Reading::neuralEnginePercentAvg, &Reading::neuralEnginePercentPeak};
    // The processor's own sensors, not the hottest one of the machine, on purpose.
    case HistoryMetricKind::temperature: return {&Reading::cpuCelsiusAvg, &Reading::cpuCelsiusPeak};
    case HistoryMetricKind::fans: return {&Reading::fanRpmAvg, &Reading::fanRpmPeak};
    case HistoryMetricKind::power: return {&Reading::powerWattsAvg, &Reading::powerWattsPeak};
  }
  return {&Reading::cpuPercentAvg, &Reading::cpuPercentPeak};
}

}  // namespace

QList<HistoryPoint> points(const std::vector<Reading>& readings, HistoryMetricKind metric,
                           std::uint64_t totalMemoryBytes) {
  const Columns columns = columnsOf(metric);
  const bool isMemory = metric == HistoryMetricKind::memory;
  const auto total = static_cast<double>(std::max<std::uint64_t>(totalMemoryBytes, 1));
  const auto figure = [&](double stored) { return isMemory ? stored / total * 100 : stored; };
  QList<HistoryPoint> points;
  points.reserve(static_cast<qsizetype>(readings.size()));
  for (const Reading& reading : readings) {
    points.append({static_cast<double>(reading.start), figure(reading.*columns.average),
                   figure(reading.*columns.peak)});
  }
  return points;
}

double average(const QList<HistoryPoint>& points) {
  if (points.isEmpty()) return 0;
  double sum = 0;
  for (const HistoryPoint& point : points) sum += point.avg;
  return sum / static_cast<double>(points.size());
}

double peak(const QList<HistoryPoint>& points) {
  if (points.isEmpty()) return 0;
  return std::max_element(points.begin(), points.end(),
                          [](const HistoryPoint& one, const HistoryPoint& other) {
                            return one.peak < other.peak;
                          })
      ->peak;
}

}  // namespace korvantis::HistoryFigures
