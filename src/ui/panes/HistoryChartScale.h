#pragma once

#include <QList>

#include "ui/panes/HistoryPoint.h"

namespace korvantis {

/// What the edges of the history chart stand for.
struct HistoryChartScale {
  /// The times of the left and right edge, seconds since 1970; equal when there are no points.
  double firstTime = 0;
  double lastTime = 0;
  /// The values of the lower and upper edge, both whole multiples of `step`. `bottom` is 0 or
  /// below.
  double bottom = 0;
  double top = 1;
  /// From one line of the grid to the next.
  double step = 1;

  bool operator==(const HistoryChartScale&) const = default;

  bool hasTimes() const { return lastTime > firstTime; }
  /// How far from the left edge a time lies, as a share of the width.
  double shareOfTime(double time) const { return (time - firstTime) / (lastTime - firstTime); }
  /// How far below the upper edge a value lies, as a share of the height.
  double shareOfValue(double value) const { return (top - value) / (top - bottom); }
};

/// Whether a figure can be drawn: finite, and not so large that arithmetic on it overflows.
bool isDrawable(double figure);

/// The scale that holds everything drawable of `points`, from 0 up to a round value, and from the
/// first time to the last one. With no value above 0 it ends at `restingTop`. Any thread.
HistoryChartScale historyChartScale(const QList<HistoryPoint>& points, double restingTop);

}  // namespace korvantis
