#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>

namespace korvantis {

/// Where the panel of the status item opens on a screen whose `room` is free of panels: centred
/// under the click, above it where the item is at the bottom; at the top right where the desktop
/// does not tell the click. Always inside `room` when it fits. Any thread.
QPoint popoverPosition(std::optional<QPoint> click, const QRect& room, const QSize& panel);

}  // namespace korvantis
