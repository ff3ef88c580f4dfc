#pragma once

#include <QObject>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// Remembers how far something was scrolled, for content that is built anew in the same window.
/// What is remembered goes with the window. Main thread.
class ScrollPlaces : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  /// Keeps the place of what is called `name` in the window of `view`; does nothing for an item
  /// that is in none.
  Q_INVOKABLE static void keep(QQuickItem* view, const QString& name, double place);

  /// The place that was kept last; 0 when there is none.
  Q_INVOKABLE static double kept(QQuickItem* view, const QString& name);
};

}  // namespace korvantis
