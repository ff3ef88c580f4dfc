#pragma once

#include <QObject>
#include <QQuickItem>
#include <QRectF>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// Lets content that is built anew give the keyboard focus back to the item that had it, known by
/// its `objectName`, and content that scrolls follow the focus. Main thread.
class KeyboardFocus : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  /// The name of the item that has the focus in the window of `content`, or of the focus scope
  /// right around it; empty when there is none, or when both have no name.
  Q_INVOKABLE static QString focusedName(QQuickItem* content);

  /// Where the text cursor of the item with the focus stands; -1 when it has none.
  Q_INVOKABLE static int focusedCursor(QQuickItem* content);

  /// Gives the focus to the item of that name in the window of `content`, the one that was added
  /// last when there are several, and puts its text cursor back; does nothing when there is none.
  Q_INVOKABLE static void focus(QQuickItem* content, const QString& name, int cursor = -1);

  /// Where in `content` the item lies that the keyboard, and not the pointer, has given the focus
  /// to; an empty rectangle when there is none in it.
  Q_INVOKABLE static QRectF focusedByKeyboard(QQuickItem* content);

  /// Takes the focus from an item inside `scope`, so that `scope` itself has it; does nothing
  /// when the focus is elsewhere.
  Q_INVOKABLE static void gather(QQuickItem* scope);
};

}  // namespace korvantis
