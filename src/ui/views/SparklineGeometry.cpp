#include "ui/views/SparklineGeometry.h"

#include <algorithm>

namespace korvantis {
namespace {

constexpr double scaleOfNoValues = 100;

double scaleOf(const QList<double>& values, std::optional<double> maxValue) {
  double scale = scaleOfNoValues;
  if (maxValue) {
    scale = *maxValue;
  } else if (!values.isEmpty()) {
    scale = *std::max_element(values.begin(), values.end());
  }
  // Written so that a scale that is no number becomes 1 too.
  return scale > 1 ? scale : 1;
}

}  // namespace

QList<QPointF> sparklinePoints(const QList<double>& values, std::optional<double> maxValue,
                               double width, double height) {
  const double scale = scaleOf(values, maxValue);
  const auto denominator = static_cast<double>(std::max<qsizetype>(2, values.size()) - 1);
  QList<QPointF> points;
  points.reserve(values.size());
  for (const double value : values) {
    const double share = value / scale;
    const double x = width * static_cast<double>(points.size()) / denominator;
    points.append({x, share > 0 ? height * (1 - std::min(share, 1.0)) : height});
  }
  return points;
}

}  // namespace korvantis
