#pragma once

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "ui/panes/HistoryPoint.h"

namespace korvantis {

/// All points of the history chart, as QML hands them from the model to the chart: a shared list,
/// so that a year of rows is never copied and never becomes a list of script objects.
struct HistorySeries {
  Q_GADGET
  QML_VALUE_TYPE(historySeries)
  Q_PROPERTY(qsizetype count READ count FINAL)

 public:
  /// In the order of the rows.
  QList<HistoryPoint> points{};

  qsizetype count() const { return points.size(); }

  bool operator==(const HistorySeries&) const = default;
};

}  // namespace korvantis
