#pragma once

#include <QObject>
#include <QString>
#include <QTimeZone>
#include <QtQml/qqmlregistration.h>

#include "ui/panes/HistoryPoint.h"

namespace korvantis {

/// What the history chart says of one of its rows, and where it lies in the chart.
struct HistoryChartReading {
  Q_GADGET
  QML_VALUE_TYPE(historyChartReading)
  Q_PROPERTY(bool isShown MEMBER isShown FINAL)
  Q_PROPERTY(double x MEMBER x FINAL)
  Q_PROPERTY(double averageY MEMBER averageY FINAL)
  Q_PROPERTY(double peakY MEMBER peakY FINAL)
  Q_PROPERTY(QString time MEMBER time FINAL)
  Q_PROPERTY(QString average MEMBER average FINAL)
  Q_PROPERTY(QString peak MEMBER peak FINAL)
  Q_PROPERTY(QString sentence MEMBER sentence FINAL)

 public:
  bool isShown = false;
  double x = 0;
  double averageY = 0;
  double peakY = 0;
  /// Such as "Sat, Nov 21 2026, 09:05".
  QString time{};
  /// Such as "Average: 12.3 %".
  QString average{};
  /// Such as "Peak: 45.6 %".
  QString peak{};
  /// All three, for those who can't see them.
  QString sentence{};

  bool operator==(const HistoryChartReading&) const = default;
};

/// The words on a row, its time in `zone`. Any thread.
HistoryChartReading historyChartReading(const HistoryPoint& point, const QString& unit,
                                        const QTimeZone& zone);

}  // namespace korvantis
