#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "state/MenuBarSettingsStore.h"

namespace korvantis {

/// Which readouts of the status item are on, as QML takes it. Main thread.
class MenuBarSettingsModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(korvantis::MenuBarSettingsStore* settings READ settings WRITE setSettings NOTIFY
                 settingsChanged REQUIRED FINAL)
  Q_PROPERTY(QStringList enabledReadouts READ enabledReadouts NOTIFY enabledReadoutsChanged FINAL)

 public:
  using QObject::QObject;

  MenuBarSettingsStore* settings() const { return settings_; }
  /// The store that is shown; it must outlive the model.
  void setSettings(MenuBarSettingsStore* settings);

  /// The names of the readouts that are on, in the order of the readouts.
  QStringList enabledReadouts() const;

  /// Turns the readout of that name on, or off unless it is the only one.
  Q_INVOKABLE void toggle(const QString& readout);

 signals:
  void settingsChanged();
  void enabledReadoutsChanged();

 private:
  MenuBarSettingsStore* settings_ = nullptr;
};

}  // namespace korvantis
