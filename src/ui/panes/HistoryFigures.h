#pragma once

#include <QList>
#include <cstdint>
#include <vector>

#include "core/Reading.h"
#include "state/HistoryMetricKind.h"
#include "ui/panes/HistoryPoint.h"

/// The figures of the history chart. Any thread.
namespace korvantis::HistoryFigures {

/// One point for each of `readings`, in their order, in the unit of `metric`: percent, degrees
/// Celsius of the processor, turns a minute or watts. Memory is in percent of `totalMemoryBytes`,
/// which counts as at least 1.
QList<HistoryPoint> points(const std::vector<Reading>& readings, HistoryMetricKind metric,
                           std::uint64_t totalMemoryBytes);

/// The plain mean of all averages, whatever time each stands for; 0 without points.
double average(const QList<HistoryPoint>& points);

/// The largest peak; 0 without points.
double peak(const QList<HistoryPoint>& points);

}  // namespace korvantis::HistoryFigures
