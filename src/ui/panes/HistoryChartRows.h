#pragma once

#include <QList>
#include <optional>

#include "ui/panes/HistoryChartScale.h"
#include "ui/panes/HistoryPoint.h"

namespace korvantis {

/// Finds the rows of the history chart that are read at its places. Rows that lie within one unit
/// of its width count as one place, for which the row with the highest peak speaks: so every spike
/// that is seen can be read. Rows that are no numbers are passed over. Any thread.
class HistoryChartRows {
 public:
  /// Looks into `points`, drawn by `scale` in `width` units; both must outlive this.
  HistoryChartRows(const QList<HistoryPoint>& points, const HistoryChartScale& scale, double width)
      : points_(points), scale_(scale), width_(width) {}

  /// The row read at `x`, or the one nearest to it; absent when there is none.
  std::optional<qsizetype> at(double x) const;
  /// The row of the first place, and that of the last one.
  std::optional<qsizetype> first() const;
  std::optional<qsizetype> last() const;
  /// The row at the next place after that of `row`, and at the last one before it; absent at the
  /// end.
  std::optional<qsizetype> after(qsizetype row) const;
  std::optional<qsizetype> before(qsizetype row) const;

  /// Where a row lies, from the left edge.
  double xOf(const HistoryPoint& point) const { return scale_.shareOfTime(point.date) * width_; }

 private:
  double placeOf(const HistoryPoint& point) const;
  template <typename Distance>
  std::optional<qsizetype> nearest(Distance distance) const;

  const QList<HistoryPoint>& points_;
  const HistoryChartScale& scale_;
  double width_;
};

}  // namespace korvantis
