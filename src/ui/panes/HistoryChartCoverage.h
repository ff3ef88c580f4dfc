#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ui/panes/HistoryChartColumns.h"

namespace korvantis {

/// How much of each pixel of a picture a line covers, 0 to 255. What is drawn twice is not covered
/// twice, so a translucent line that crosses itself stays even. The columns lie one after the
/// other in memory, since a chart of many rows is a row of upright strokes.
class HistoryChartCoverage {
 public:
  HistoryChartCoverage(int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  /// The coverage of one column, from the uppermost pixel on.
  std::span<const std::uint8_t> column(int index) const;

  /// Draws the line through `points`, `lineWidth` pixels wide; one point alone is a dot. Few
  /// points are drawn as strokes with smooth edges, many as one upright stroke a column, which
  /// takes time for the points and for the pixels but not for both at once. `bands` are those of
  /// the points in the columns of this picture.
  void drawLine(std::span<const PixelPoint> points, const std::vector<ColumnBand>& bands,
                float lineWidth);

 private:
  std::span<std::uint8_t> mutableColumn(int index);
  void drawStroke(PixelPoint from, PixelPoint to, float radius);
  void drawBands(const std::vector<ColumnBand>& bands, float radius);
  void drawBand(int column, const ColumnBand& band, float radius, float strength);

  int width_;
  int height_;
  std::vector<std::uint8_t> pixels_;
};

}  // namespace korvantis
