#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QRectF>
#include <QString>
#include <QTimeZone>
#include <QtQml/qqmlregistration.h>
#include <optional>

#include "ui/panes/HistoryChartAxes.h"
#include "ui/panes/HistoryChartReading.h"
#include "ui/panes/HistoryChartScale.h"
#include "ui/panes/HistorySeries.h"

namespace korvantis {

class HistoryChartRows;

/// The chart of the history pane: every row of it, and the row that is being read, which its user
/// marks above it. Draws anew only when the rows, the colour or its room change; reading costs no
/// drawing. Main thread; painted on the render thread while the main thread waits.
class HistoryChartItem : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(korvantis::HistorySeries series READ series WRITE setSeries NOTIFY seriesChanged FINAL)
  Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
  Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged FINAL)
  /// Where the scale ends when no value is above 0.
  Q_PROPERTY(double restingTop READ restingTop WRITE setRestingTop NOTIFY restingTopChanged FINAL)
  /// Where the curves are; marks of the reading stay inside.
  Q_PROPERTY(QRectF plot READ plot NOTIFY plotChanged FINAL)
  Q_PROPERTY(korvantis::HistoryChartReading reading READ reading NOTIFY readingChanged FINAL)

 public:
  explicit HistoryChartItem(QQuickItem* parent = nullptr);

  const HistorySeries& series() const { return series_; }
  void setSeries(const HistorySeries& series);
  const QColor& color() const { return color_; }
  void setColor(const QColor& color);
  const QString& unit() const { return unit_; }
  void setUnit(const QString& unit);
  double restingTop() const { return restingTop_; }
  void setRestingTop(double restingTop);
  QRectF plot() const { return axes_.plot(); }
  const HistoryChartReading& reading() const { return reading_; }

  /// Reads the row under `x`, or the one nearest to it. Where several rows share a place, the one
  /// with the highest peak is read.
  Q_INVOKABLE void readAt(double x);
  /// Reads the first or last row, or the one at the place after or before that being read. At the
  /// end, and where there are no rows, nothing changes.
  Q_INVOKABLE void readFirst();
  Q_INVOKABLE void readLast();
  Q_INVOKABLE void readNext();
  Q_INVOKABLE void readPrevious();
  /// Reads no row.
  Q_INVOKABLE void stopReading();

  void paint(QPainter* painter) override;

 signals:
  void seriesChanged();
  void colorChanged();
  void unitChanged();
  void restingTopChanged();
  void plotChanged();
  void readingChanged();

 protected:
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  void updateScale();
  void updateAxes();
  void updateReading();
  void readRow(std::optional<qsizetype> row);
  HistoryChartRows rows() const;

  HistorySeries series_;
  QColor color_;
  QString unit_;
  double restingTop_ = 1;
  QTimeZone zone_ = QTimeZone::systemTimeZone();
  HistoryChartScale scale_;
  HistoryChartAxes axes_;
  std::optional<qsizetype> readRow_;
  HistoryChartReading reading_;
};

}  // namespace korvantis
