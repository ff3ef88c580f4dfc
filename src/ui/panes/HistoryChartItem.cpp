#include "ui/panes/HistoryChartItem.h"

#include <QPainter>

#include "ui/panes/HistoryChartPicture.h"
#include "ui/panes/HistoryChartRows.h"
#include "ui/views/ModelText.h"

namespace korvantis {

HistoryChartItem::HistoryChartItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
  updateScale();
}

void HistoryChartItem::setSeries(const HistorySeries& series) {
  if (series == series_) return;
  // Another metric of the same rows keeps the row that is being read.
  const auto dateIn = [this](const HistorySeries& any) {
    return readRow_ && *readRow_ < any.points.size() ? std::optional(any.points[*readRow_].date)
                                                     : std::nullopt;
  };
  if (dateIn(series) != dateIn(series_)) readRow_.reset();
  series_ = series;
  updateScale();
  emit seriesChanged();
}

void HistoryChartItem::setColor(const QColor& color) {
  if (color == color_) return;
  color_ = color;
  update();
  emit colorChanged();
}

void HistoryChartItem::setUnit(const QString& unit) {
  if (unit == unit_) return;
  unit_ = unit;
  updateAxes();
  emit unitChanged();
}

void HistoryChartItem::setRestingTop(double restingTop) {
  if (restingTop == restingTop_) return;
  restingTop_ = restingTop;
  updateScale();
  emit restingTopChanged();
}

void HistoryChartItem::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickPaintedItem::geometryChange(now, before);
  if (now.size() != before.size()) updateAxes();
}

void HistoryChartItem::updateScale() {
  scale_ = historyChartScale(series_.points, restingTop_);
  updateAxes();
}

void HistoryChartItem::updateAxes() {
  const QRectF before = plot();
  axes_ = HistoryChartAxes(scale_, unit_, size(), zone_);
  update();
  if (plot() != before) emit plotChanged();
  updateReading();
}

HistoryChartRows HistoryChartItem::rows() const {
  return {series_.points, scale_, plot().width()};
}

void HistoryChartItem::updateReading() {
  HistoryChartReading reading;
  if (readRow_ && !plot().isEmpty()) {
    const HistoryPoint& point = series_.points[*readRow_];
    reading = historyChartReading(point, unit_, zone_);
    reading.x = plot().left() + rows().xOf(point);
    reading.averageY = plot().top() + scale_.shareOfValue(point.avg) * plot().height();
    reading.peakY = plot().top() + scale_.shareOfValue(point.peak) * plot().height();
  }
  updateField(this, reading_, std::move(reading), &HistoryChartItem::readingChanged);
}

void HistoryChartItem::readRow(std::optional<qsizetype> row) {
  if (!row) return;
  readRow_ = row;
  updateReading();
}

void HistoryChartItem::readAt(double x) {
  readRow(rows().at(x - plot().left()));
}

void HistoryChartItem::readFirst() {
  readRow(rows().first());
}

void HistoryChartItem::readLast() {
  readRow(rows().last());
}

void HistoryChartItem::readNext() {
  readRow(readRow_ ? rows().after(*readRow_) : rows().first());
}

void HistoryChartItem::readPrevious() {
  readRow(readRow_ ? rows().before(*readRow_) : rows().last());
}

void HistoryChartItem::stopReading() {
  readRow_.reset();
  updateReading();
}

void HistoryChartItem::paint(QPainter* painter) {
  if (plot().isEmpty()) return;
  const double ratio = painter->deviceTransform().m11();
  const HistoryChartPicture picture{scale_, color_, plot().width(), plot().height(), ratio};
  const QPointF margin(HistoryChartPicture::margin, HistoryChartPicture::margin);
  axes_.drawGrid(*painter);
  painter->drawImage(plot().topLeft() - margin, picture.draw(series_.points));
  axes_.drawLabels(*painter);
}

}  // namespace korvantis
