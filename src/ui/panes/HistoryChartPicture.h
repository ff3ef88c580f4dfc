#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QSize>

#include "ui/panes/HistoryChartScale.h"
#include "ui/panes/HistoryPoint.h"

namespace korvantis {

/// The curves of the history chart: an area under the averages that fades from 0.35 at its top to
/// 0.02, a line of the averages 2 wide, and a line of the peaks 1 wide at 0.45, all in one colour
/// over nothing.
struct HistoryChartPicture {
  /// Room around the plot, in units, so that a line on its very edge keeps its width.
  static constexpr double margin = 2;

  HistoryChartScale scale;
  QColor color;
  /// The room of the plot in units, without the margins.
  double width = 0;
  double height = 0;
  /// So many pixels to a unit.
  double pixelRatio = 1;

  /// How large the picture is in pixels, margins included.
  QSize pixelSize() const;

  /// Draws every point; those that are no numbers are left out. The image knows its pixel ratio;
  /// it is null where there is no room. Any thread.
  QImage draw(const QList<HistoryPoint>& points) const;
};

}  // namespace korvantis
