#pragma once

#include <QList>
#include <QPainter>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTimeZone>

#include "ui/panes/HistoryChartScale.h"
#include "ui/panes/HistoryChartTicks.h"

namespace korvantis {

/// The grid of the history chart and what stands beside it: values at the right, where the newest
/// rows are, times below. Once there is an application object.
class HistoryChartAxes {
 public:
  HistoryChartAxes() = default;
  /// Divides a chart of `size`; times are those of `zone`.
  HistoryChartAxes(const HistoryChartScale& scale, const QString& unit, const QSizeF& size,
                   const QTimeZone& zone);

  /// The room that is left for the curves; empty when the chart is too small for any.
  const QRectF& plot() const { return plot_; }

  /// The lines that lie behind the curves.
  void drawGrid(QPainter& painter) const;
  void drawLabels(QPainter& painter) const;

 private:
  double yOf(const HistoryChartTick& tick) const;
  double xOf(const HistoryChartTick& tick) const;

  HistoryChartScale scale_;
  QSizeF size_;
  QRectF plot_;
  QList<HistoryChartTick> values_;
  QList<HistoryChartTick> times_;
};

}  // namespace korvantis
