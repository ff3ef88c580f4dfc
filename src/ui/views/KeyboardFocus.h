#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// Lets content that is built anew give the keyboard focus back to the item that had it, known by
/// its `objectName`. Main thread.
class KeyboardFocus : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  /// The name of the item that has the focus in the window of `content`; empty when there is
  /// none, or when it has no name.
  Q_INVOKABLE static QString focusedName(QQuickItem* content);

  /// Gives the focus to the item of that name in the window of `content`, the one that was added
  /// last when there are several; does nothing when there is none.
  Q_INVOKABLE static void focus(QQuickItem* content, const QString& name);

  /// Takes the focus from an item inside `scope`, so that `scope` itself has it; does nothing
  /// when the focus is elsewhere.
  Q_INVOKABLE static void gather(QQuickItem* scope);
};

}  // namespace korvantis
