#include "ui/panes/HistoryChartRows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvantis {

namespace {

bool isReadable(const HistoryPoint& point) {
  return isDrawable(point.date) && isDrawable(point.avg) && isDrawable(point.peak);
}

}  // namespace

/// The unit of the width in which a row lies; the right edge belongs to the last one.
double HistoryChartRows::placeOf(const HistoryPoint& point) const {
  return std::min(std::floor(xOf(point)), std::ceil(width_) - 1);
}

/// The row with the highest peak among those with the least `distance` of their place; those
/// with a distance that is not above or at 0 don't count.
template <typename Distance>
std::optional<qsizetype> HistoryChartRows::nearest(Distance distance) const {
  if (!scale_.hasTimes()) return std::nullopt;
  std::optional<qsizetype> found;
  double least = std::numeric_limits<double>::infinity();
  for (qsizetype row = 0; row < points_.size(); ++row) {
    const HistoryPoint& point = points_[row];
    if (!isReadable(point)) continue;
    const double away = distance(placeOf(point));
    if (!(away >= 0) || away > least) continue;
    if (found && away == least && point.peak <= points_[*found].peak) continue;
    found = row;
    least = away;
  }
  return found;
}

std::optional<qsizetype> HistoryChartRows::at(double x) const {
  const double place = std::floor(x);
  return nearest([place](double other) { return std::abs(other - place); });
}

std::optional<qsizetype> HistoryChartRows::first() const {
  return nearest([](double place) { return place; });
}

std::optional<qsizetype> HistoryChartRows::last() const {
  return nearest([this](double place) { return std::ceil(width_) - 1 - place; });
}

std::optional<qsizetype> HistoryChartRows::after(qsizetype row) const {
  const double place = placeOf(points_[row]);
  return nearest([place](double other) { return other - place - 1; });
}

std::optional<qsizetype> HistoryChartRows::before(qsizetype row) const {
  const double place = placeOf(points_[row]);
  return nearest([place](double other) { return place - other - 1; });
}

}  // namespace korvantis
