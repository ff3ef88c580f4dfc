#pragma once

#include <QList>
#include <QPointF>
#include <optional>

namespace korvantis {

/// The points of a sparkline in a room of `width` by `height`, oldest first. The top of the scale
/// is `maxValue`, else the largest of `values`, at least 1, so that small figures don't explode;
/// what lies above it stays on the top edge, what lies below 0 on the bottom edge. Any thread.
QList<QPointF> sparklinePoints(const QList<double>& values, std::optional<double> maxValue,
                               double width, double height);

}  // namespace korvantis
