#include "ui/panes/HistoryChartAxes.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "ui/theme/OstrelFont.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {

namespace {

/// Whole on every usual screen, also on one with a quarter of a pixel more to a unit.
constexpr double roomAbove = 10;
constexpr double roomBelow = 22;
constexpr double roomAtTheLeft = 2;
constexpr double besideLabels = 10;
constexpr double belowPlot = 7;
constexpr double betweenTimes = 88;
constexpr double labelSize = 10;

QFont labelFont() {
  return OstrelFont::system(labelSize);
}

double widestOf(const QList<HistoryChartTick>& ticks) {
  const QFontMetricsF metrics(labelFont());
  double widest = 0;
  for (const HistoryChartTick& tick : ticks) {
    widest = std::max(widest, metrics.horizontalAdvance(tick.text));
  }
  return std::ceil(widest);
}

}  // namespace

HistoryChartAxes::HistoryChartAxes(const HistoryChartScale& scale, const QString& unit,
                                   const QSizeF& size, const QTimeZone& zone)
    : scale_(scale), size_(size), values_(valueTicks(scale, unit)) {
  const double right = std::floor(size.width() - widestOf(values_) - besideLabels);
  plot_ = QRectF(QPointF(roomAtTheLeft, roomAbove),
                 QPointF(right, std::floor(size.height() - roomBelow)));
  if (!plot_.isValid()) {
    plot_ = QRectF();
    return;
  }
  times_ = timeTicks(scale, static_cast<int>(plot_.width() / betweenTimes), zone);
}

double HistoryChartAxes::yOf(const HistoryChartTick& tick) const {
  return plot_.top() + scale_.shareOfValue(tick.at) * plot_.height();
}

double HistoryChartAxes::xOf(const HistoryChartTick& tick) const {
  return plot_.left() + scale_.shareOfTime(tick.at) * plot_.width();
}

/// Filled rather than drawn, so that each line is exactly one unit thin.
void HistoryChartAxes::drawGrid(QPainter& painter) const {
  if (plot_.isEmpty()) return;
  for (const HistoryChartTick& time : times_) {
    painter.fillRect(QRectF(std::round(xOf(time)), plot_.top(), 1, plot_.height()),
                     OstrelTheme::hairline());
  }
  for (const HistoryChartTick& value : values_) {
    painter.fillRect(QRectF(plot_.left(), std::round(yOf(value)), plot_.width(), 1),
                     value.at == 0 ? OstrelTheme::subtleBorder() : OstrelTheme::hairline());
  }
}

void HistoryChartAxes::drawLabels(QPainter& painter) const {
  if (plot_.isEmpty()) return;
  painter.setFont(labelFont());
  painter.setPen(OstrelTheme::ink3());
  const QFontMetricsF metrics(labelFont());
  const double height = metrics.height();
  for (const HistoryChartTick& value : values_) {
    const double width = metrics.horizontalAdvance(value.text);
    painter.drawText(
        QPointF(size_.width() - width, std::round(yOf(value) + metrics.ascent() - height / 2)),
        value.text);
  }
  for (const HistoryChartTick& time : times_) {
    const double width = metrics.horizontalAdvance(time.text);
    // A label near an edge stays inside.
    const double x = std::clamp(xOf(time) - width / 2, 0.0, std::max(0.0, size_.width() - width));
    painter.drawText(QPointF(std::round(x), plot_.bottom() + belowPlot + metrics.ascent()),
                     time.text);
  }
}

}  // namespace korvantis
