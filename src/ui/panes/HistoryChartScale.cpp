#include "ui/panes/HistoryChartScale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace korvantis {

namespace {

constexpr double firstTooLarge = 1e100;
constexpr double smallestTop = 1e-6;
/// Half the time that is shown around a lone row.
constexpr double halfALoneRow = 150;
/// The grid has about so many lines above the lowest one.
constexpr double wantedSteps = 4;

/// The smallest round number that is at least `step`.
double roundStep(double step) {
  const double power = std::pow(10, std::floor(std::log10(step)));
  for (const double factor : std::array{1.0, 2.0, 2.5, 5.0}) {
    if (factor * power >= step) return factor * power;
  }
  return 10 * power;
}

struct Extent {
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -std::numeric_limits<double>::infinity();

  void include(double value) {
    if (!isDrawable(value)) return;
    lowest = std::min(lowest, value);
    highest = std::max(highest, value);
  }
  bool isEmpty() const { return lowest > highest; }
};

}  // namespace

bool isDrawable(double figure) {
  return std::abs(figure) < firstTooLarge;
}

HistoryChartScale historyChartScale(const QList<HistoryPoint>& points, double restingTop) {
  Extent times;
  Extent values;
  for (const HistoryPoint& point : points) {
    times.include(point.date);
    values.include(point.avg);
    values.include(point.peak);
  }
  HistoryChartScale scale;
  const double lowest = values.isEmpty() ? 0 : std::min(values.lowest, 0.0);
  const double highest = values.isEmpty() || values.highest < smallestTop
                             ? std::max(smallestTop, restingTop)
                             : values.highest;
  scale.step = roundStep((highest - lowest) / wantedSteps);
  scale.top = std::ceil(highest / scale.step) * scale.step;
  scale.bottom = lowest < 0 ? std::floor(lowest / scale.step) * scale.step : 0;
  if (times.isEmpty()) return scale;
  const double around = times.highest > times.lowest ? 0 : halfALoneRow;
  scale.firstTime = times.lowest - around;
  scale.lastTime = times.highest + around;
  return scale;
}

}  // namespace korvantis
