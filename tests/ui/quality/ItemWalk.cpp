#include "ui/quality/ItemWalk.h"

#include <QQuickWindow>
#include <QSet>
#include <QStringList>
#include <algorithm>

namespace korvantis::test {

namespace {

constexpr double everywhere = 1e6;

QString typeOf(const QQuickItem* item) {
  QString name = QString::fromUtf8(item->metaObject()->className());
  name.truncate(name.contains(QStringLiteral("_QML")) ? name.indexOf(QStringLiteral("_QML"))
                                                      : name.size());
  return name;
}

/// The rows that a list keeps for later use are still its children, and count as visible, but
/// nothing paints them.
QList<QQuickItem*> withoutKeptRows(const QQuickItem* content, QList<QQuickItem*> children) {
  QQuickItem* const list = content->parentItem();
  if (!list || !list->inherits("QQuickItemView")) return children;
  QSet<const QQuickItem*> shown;
  QSet<const QMetaObject*> kinds;
  const int count = list->property("count").toInt();
  for (int index = 0; index < count; ++index) {
    QQuickItem* row = nullptr;
    QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem*, row),
                              Q_ARG(int, index));
    if (!row) continue;
    shown.insert(row);
    kinds.insert(row->metaObject());
  }
  children.removeIf([&](const QQuickItem* child) {
    return kinds.contains(child->metaObject()) && !shown.contains(child);
  });
  return children;
}

void walk(QQuickItem* item, ShownItem above, std::vector<ShownItem>& found) {
  if (!item->isVisible() || item->opacity() <= 0) return;
  above.item = item;
  above.opacity *= item->opacity();
  found.push_back(above);
  if (item->clip()) {
    const QRectF own = item->mapRectToScene(item->clipRect());
    above.clip &= own;
    above.unscrollableClip &= own;
  }
  if (scrollsDown(item)) {
    above.unscrollableClip.setTop(-everywhere);
    above.unscrollableClip.setBottom(everywhere);
  }
  if (scrollsAside(item)) {
    above.unscrollableClip.setLeft(-everywhere);
    above.unscrollableClip.setRight(everywhere);
  }
  QList<QQuickItem*> children = withoutKeptRows(item, item->childItems());
  std::stable_sort(children.begin(), children.end(),
                   [](const auto* one, const auto* other) { return one->z() < other->z(); });
  for (QQuickItem* const child : children) walk(child, above, found);
}

bool isPaintedRectangle(const QQuickItem* item) {
  if (!item->inherits("QQuickRectangle") || !item->isVisible()) return false;
  const auto color = item->property("color").value<QColor>();
  const auto* const border = item->property("border").value<QObject*>();
  const bool hasBorder = border && border->property("width").toDouble() > 0 &&
                         border->property("color").value<QColor>().alpha() > 0;
  return color.alpha() > 0 || hasBorder;
}

}  // namespace

std::vector<ShownItem> shownItems(QQuickItem* root) {
  std::vector<ShownItem> found;
  // The popup of the settings clips nothing; the window always does.
  const QRectF all(QPointF(), root->window() ? QSizeF(root->window()->size()) : root->size());
  walk(root, {.item = root, .clip = all, .unscrollableClip = all}, found);
  return found;
}

bool isText(const QQuickItem* item) {
  return item->inherits("QQuickText");
}

QString textOf(const QQuickItem* item) {
  return item->property("text").toString();
}

bool isControl(const QQuickItem* item) {
  static constexpr const char* types[] = {"QQuickAbstractButton", "QQuickComboBox",
                                          "QQuickSlider",         "QQuickTextInput",
                                          "QQuickTextEdit",       "QQuickSpinBox"};
  return item->isEnabled() && std::any_of(std::begin(types), std::end(types),
                                          [&](const auto* type) { return item->inherits(type); });
}

bool isFlickable(const QQuickItem* item) {
  return item->inherits("QQuickFlickable");
}

bool scrollsDown(const QQuickItem* item) {
  return isFlickable(item) && item->property("contentHeight").toDouble() > item->height() + 1;
}

bool scrollsAside(const QQuickItem* item) {
  return isFlickable(item) && item->property("contentWidth").toDouble() > item->width() + 1;
}

bool isFramed(const QQuickItem* item) {
  if (isPaintedRectangle(item)) return true;
  const QList<QQuickItem*> children = item->childItems();
  return std::any_of(children.begin(), children.end(), [&](const QQuickItem* child) {
    return isPaintedRectangle(child) && child->position() == QPointF() &&
           child->size() == item->size();
  });
}

QString described(const QQuickItem* item) {
  QStringList around;
  for (const QQuickItem* above = item; above && around.size() < 6; above = above->parentItem()) {
    const QString type = typeOf(above);
    const QString name = above->objectName();
    if (type.startsWith(QStringLiteral("QQuick")) && name.isEmpty() && above != item) continue;
    around += name.isEmpty() ? type : type + u'#' + name;
  }
  const QString text = textOf(item);
  return (text.isEmpty() ? QString() : u'"' + text + QStringLiteral("\" ")) +
         around.join(QStringLiteral(" < "));
}

QQuickItem* listAround(QQuickItem* item, QQuickItem** row) {
  for (QQuickItem* above = item; above && above->parentItem(); above = above->parentItem()) {
    QQuickItem* const list = above->parentItem()->parentItem();
    // A row stands in the content item of its list.
    if (list && list->inherits("QQuickItemView") &&
        list->property("contentItem").value<QQuickItem*>() == above->parentItem()) {
      if (row) *row = above;
      return list;
    }
  }
  return nullptr;
}

}  // namespace korvantis::test
