#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "ui/views/Choice.h"

namespace korvantis {

/// What the toolbar of the processes pane offers. Main thread.
class ProcessesPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QList<korvantis::Choice> sortFields READ sortFields CONSTANT FINAL)

 public:
  using QObject::QObject;

  /// What the list can be sorted by.
  QList<Choice> sortFields() const;

  /// The place of the field of that name in `sortFields`; -1 when there is none.
  Q_INVOKABLE int indexOfSortField(const QString& name) const;
};

}  // namespace korvantis
