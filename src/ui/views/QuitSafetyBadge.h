#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "core/QuitSafetyVerdictKind.h"

namespace korvantis {

/// Words and colours of the badge of a verdict on quitting. A verdict is told by its name ("safe",
/// "ask_first", "do_not"). Main thread.
class QuitSafetyBadge : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  /// The words; empty for a name that is none.
  Q_INVOKABLE static QString text(const QString& verdict);
  /// The colour of the capsule, mostly transparent.
  Q_INVOKABLE static QColor ground(const QString& verdict);
  Q_INVOKABLE static QColor ink(const QString& verdict);
};

}  // namespace korvantis
