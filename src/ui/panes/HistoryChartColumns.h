#pragma once

#include <limits>
#include <span>
#include <vector>

namespace korvantis {

/// A place in a picture, in its pixels, from the upper left corner.
struct PixelPoint {
  float x = 0;
  float y = 0;
};

/// From where to where a line runs within one column of pixels.
struct ColumnBand {
  float upper = std::numeric_limits<float>::infinity();
  float lower = -std::numeric_limits<float>::infinity();

  bool isEmpty() const { return upper > lower; }
  void include(float y) {
    if (y < upper) upper = y;
    if (y > lower) lower = y;
  }
};

/// The bands of the line through `points` in each of `width` columns. Every point is read and
/// keeps its place in a band, so no spike is lost, however many points share a column. Points may
/// lie in any order, to the right or to the left of each other. Any thread.
std::vector<ColumnBand> columnBands(std::span<const PixelPoint> points, int width);

}  // namespace korvantis
