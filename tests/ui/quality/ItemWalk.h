#pragma once

#include <QColor>
#include <QQuickItem>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

namespace korvantis::test {

/// An item that is on screen, and what of the window it may paint on. Coordinates are the scene's.
struct ShownItem {
  QQuickItem* item = nullptr;
  /// Of all that clips above it.
  QRectF clip;
  /// The same without what scrolls in that direction: there, something cut off can be had by
  /// scrolling.
  QRectF unscrollableClip;
  double opacity = 1;

  QRectF rect() const { return item->mapRectToScene(item->boundingRect()); }
  QRectF visibleRect() const { return rect() & clip; }
};

/// The visible items at and below `root` in painting order.
std::vector<ShownItem> shownItems(QQuickItem* root);

/// A text, by what it says, with the place where its letters are.
bool isText(const QQuickItem* item);
QString textOf(const QQuickItem* item);

/// Something to operate: a button, a picker, a slider, a field.
bool isControl(const QQuickItem* item);

bool isFlickable(const QQuickItem* item);
/// Whether there is more in it than it shows.
bool scrollsDown(const QQuickItem* item);
bool scrollsAside(const QQuickItem* item);

/// Whether `item` paints a ground or a frame of its own, or has a child that does so for all of it:
/// a card, a chip, a button.
bool isFramed(const QQuickItem* item);

/// Whom a fault concerns, for people: what it says, its name, and the types around it.
QString described(const QQuickItem* item);

/// The innermost list in which `item` is, or belongs to, a row; absent when it is in none. `row`
/// becomes the outermost item of that row.
QQuickItem* listAround(QQuickItem* item, QQuickItem** row = nullptr);

}  // namespace korvantis::test
