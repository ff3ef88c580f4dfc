#include "ui/views/KeyboardFocus.h"

#include <QQuickWindow>

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

}  // namespace

QString KeyboardFocus::focusedName(QQuickItem* content) {
  const QQuickWindow* const window = content ? content->window() : nullptr;
  const QQuickItem* const focused = window ? window->activeFocusItem() : nullptr;
  return focused ? focused->objectName() : QString();
}

void KeyboardFocus::focus(QQuickItem* content, const QString& name) {
  const QQuickWindow* const window = content ? content->window() : nullptr;
  if (!window || name.isEmpty()) return;
  if (QQuickItem* const item = lastOfName(window->contentItem(), name)) {
    item->forceActiveFocus(Qt::OtherFocusReason);
  }
}

void KeyboardFocus::gather(QQuickItem* scope) {
  const QQuickWindow* const window = scope ? scope->window() : nullptr;
  QQuickItem* const focused = window ? window->activeFocusItem() : nullptr;
  if (focused && focused != scope && scope->isAncestorOf(focused)) focused->setFocus(false);
}

}  // namespace korvantis
