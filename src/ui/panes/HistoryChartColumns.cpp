#include "ui/panes/HistoryChartColumns.h"

#include <algorithm>
#include <utility>

namespace korvantis {

namespace {

int columnOf(float x, int width) {
  return static_cast<int>(std::clamp(x, 0.0F, static_cast<float>(width - 1)));
}

/// The part of a line from one column to a later one.
void includeAcross(std::vector<ColumnBand>& bands, PixelPoint from, PixelPoint to) {
  if (from.x > to.x) std::swap(from, to);
  const int width = static_cast<int>(bands.size());
  const int last = columnOf(to.x, width);
  const float slope = (to.y - from.y) / (to.x - from.x);
  for (int column = columnOf(from.x, width); column < last; ++column) {
    const float edge = static_cast<float>(column + 1);
    const float y = from.y + slope * (edge - from.x);
    bands[static_cast<std::size_t>(column)].include(y);
    bands[static_cast<std::size_t>(column) + 1].include(y);
  }
}

}  // namespace

std::vector<ColumnBand> columnBands(std::span<const PixelPoint> points, int width) {
  if (width < 1) return {};
  std::vector<ColumnBand> bands(static_cast<std::size_t>(width));
  if (points.empty()) return bands;
  PixelPoint previous = points.front();
  int previousColumn = columnOf(previous.x, width);
  for (const PixelPoint point : points) {
    const int column = columnOf(point.x, width);
    if (column != previousColumn) includeAcross(bands, previous, point);
    bands[static_cast<std::size_t>(column)].include(point.y);
    previous = point;
    previousColumn = column;
  }
  return bands;
}

}  // namespace korvantis
