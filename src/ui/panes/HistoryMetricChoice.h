#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// A metric that the history pane offers to chart.
struct HistoryMetricChoice {
  Q_GADGET
  QML_VALUE_TYPE(historyMetricChoice)
  Q_PROPERTY(QString name MEMBER name FINAL)
  Q_PROPERTY(QString label MEMBER label FINAL)
  Q_PROPERTY(QColor color MEMBER color FINAL)

 public:
  /// The name of its case, as the store takes it.
  QString name{};
  QString label{};
  QColor color{};

  bool operator==(const HistoryMetricChoice&) const = default;
};

}  // namespace korvantis
