#include "ui/views/SparklineView.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <cmath>

#include "ui/views/SparklineGeometry.h"

namespace korvantis {
namespace {

constexpr double lineWidth = 1.75;
constexpr double miterLimit = 10;
constexpr float opacityAtTop = 0.32F;
constexpr float opacityAtBottom = 0.02F;

QColor withOpacity(QColor color, float opacity) {
  color.setAlphaF(opacity);
  return color;
}

QLinearGradient ground(const QColor& color, double height) {
  QLinearGradient gradient(0, 0, 0, height);
  gradient.setColorAt(0, withOpacity(color, opacityAtTop));
  gradient.setColorAt(1, withOpacity(color, opacityAtBottom));
  return gradient;
}

QPen linePen(const QColor& color) {
  QPen pen(color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  pen.setMiterLimit(miterLimit);
  return pen;
}

}  // namespace

SparklineView::SparklineView(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setImplicitHeight(defaultHeight);
  setAntialiasing(true);
}

void SparklineView::setValues(const QList<double>& values) {
  if (values == values_) return;
  values_ = values;
  update();
  emit valuesChanged();
}

void SparklineView::setColor(const QColor& color) {
  if (color == color_) return;
  color_ = color;
  update();
  emit colorChanged();
}

void SparklineView::setMaxValue(double maxValue) {
  if (maxValue == maxValue_) return;
  maxValue_ = maxValue;
  update();
  emit maxValueChanged();
}

std::optional<double> SparklineView::fixedScale() const {
  return std::isnan(maxValue_) ? std::nullopt : std::optional(maxValue_);
}

void SparklineView::paint(QPainter* painter) {
  if (values_.isEmpty()) return;
  const QPolygonF line(sparklinePoints(values_, fixedScale(), width(), height()));
  QPolygonF shape(line);
  shape.prepend(QPointF(0, height()));
  shape.append(QPointF(width(), height()));
  painter->setPen(Qt::NoPen);
  painter->setBrush(ground(color_, height()));
  painter->drawPolygon(shape);
  painter->setPen(linePen(color_));
  if (line.size() == 1) {
    painter->drawPoint(line.first());
  } else {
    painter->drawPolyline(line);
  }
}

}  // namespace korvantis
