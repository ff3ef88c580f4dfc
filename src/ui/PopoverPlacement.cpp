#include "ui/PopoverPlacement.h"

#include <algorithm>

namespace korvantis {
namespace {

/// Between the panel and the edge of the screen.
constexpr int gap = 6;

}  // namespace

QPoint popoverPosition(std::optional<QPoint> click, const QRect& room, const QSize& panel) {
  const int rightmost = room.x() + room.width() - panel.width() - gap;
  const int lowest = room.y() + room.height() - panel.height() - gap;
  const int leftmost = room.x() + gap;
  const int highest = room.y() + gap;
  if (!click) return {std::max(leftmost, rightmost), highest};
  const bool opensDownward = click->y() < room.center().y();
  const int x = click->x() - panel.width() / 2;
  const int y = opensDownward ? click->y() + gap : click->y() - gap - panel.height();
  return {std::max(leftmost, std::min(x, rightmost)), std::max(highest, std::min(y, lowest))};
}

}  // namespace korvantis
