#pragma once

#include <QList>
#include <QString>
#include <QTimeZone>

#include "ui/panes/HistoryChartScale.h"

namespace korvantis {

/// One mark on an axis of the history chart.
struct HistoryChartTick {
  /// A value, or a time in seconds since 1970.
  double at = 0;
  QString text;

  bool operator==(const HistoryChartTick&) const = default;
};

/// The lines of the grid from the lowest to the highest, such as "25 %" or, where figures are
/// large, "20k RPM". No locale is consulted. Any thread.
QList<HistoryChartTick> valueTicks(const HistoryChartScale& scale, const QString& unit);

/// At most `mostTicks` round times of day, days, months or years in `zone` between the edges,
/// oldest first: "14:30", "Nov 21" (also at midnight among times of day), "Feb", "Jan 2026" and
/// "2026". None when the edges are equal or hundreds of years away. Any thread.
QList<HistoryChartTick> timeTicks(const HistoryChartScale& scale, int mostTicks,
                                  const QTimeZone& zone);

}  // namespace korvantis
