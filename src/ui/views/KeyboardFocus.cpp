#include "ui/views/KeyboardFocus.h"

#include <QQuickWindow>
#include <QVariant>

namespace korvantis {

namespace {

/// What is on its way out may still carry the same name, and comes first.
QQuickItem* lastOfName(QQuickItem* item, const QString& name) {
  const QList<QQuickItem*> children = item->childItems();
  for (auto child = children.rbegin(); child != children.rend(); ++child) {
    if (QQuickItem* const found = lastOfName(*child, name)) return found;
  }
  return item->objectName() == name ? item : nullptr;
}

QQuickItem* focusedItem(const QQuickItem* content) {
  const QQuickWindow* const window = content ? content->window() : nullptr;
  return window ? window->activeFocusItem() : nullptr;
}

/// The focus scope right around an item.
const QQuickItem* scopeAround(const QQuickItem* item) {
  const QQuickItem* scope = item->parentItem();
  while (scope && !scope->isFocusScope()) scope = scope->parentItem();
  return scope;
}

bool isPointersReason(const QQuickItem& item) {
  const QVariant reason = item.property("focusReason");
  return reason.isValid() && reason.toInt() == Qt::MouseFocusReason;
}

}  // namespace

QString KeyboardFocus::focusedName(QQuickItem* content) {
  const QQuickItem* const focused = focusedItem(content);
  if (!focused) return {};
  if (!focused->objectName().isEmpty()) return focused->objectName();
  const QQuickItem* const scope = scopeAround(focused);
  return scope ? scope->objectName() : QString();
}

int KeyboardFocus::focusedCursor(QQuickItem* content) {
  const QQuickItem* const focused = focusedItem(content);
  const QVariant cursor = focused ? focused->property("cursorPosition") : QVariant();
  return cursor.isValid() ? cursor.toInt() : -1;
}

void KeyboardFocus::focus(QQuickItem* content, const QString& name, int cursor) {
  const QQuickWindow* const window = content ? content->window() : nullptr;
  if (!window || name.isEmpty()) return;
  QQuickItem* const item = lastOfName(window->contentItem(), name);
  if (!item) return;
  item->forceActiveFocus(Qt::OtherFocusReason);
  QQuickItem* const focused = window->activeFocusItem();
  if (cursor >= 0 && focused && focused->property("cursorPosition").isValid())
    focused->setProperty("cursorPosition", cursor);
}

QRectF KeyboardFocus::focusedByKeyboard(QQuickItem* content) {
  const QQuickItem* const focused = focusedItem(content);
  if (!focused || !content->isAncestorOf(focused) || isPointersReason(*focused)) return {};
  return focused->mapRectToItem(content, focused->boundingRect());
}

void KeyboardFocus::gather(QQuickItem* scope) {
  const QQuickItem* before = nullptr;
  QQuickItem* focused = focusedItem(scope);
  while (focused && focused != before && focused != scope && scope->isAncestorOf(focused)) {
    // It falls to the focus scope around the item, which may lie inside of `scope` too.
    before = focused;
    focused->setFocus(false);
    focused = focusedItem(scope);
  }
}

}  // namespace korvantis
