#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/LookStore.h"

namespace korvantis {

/// What the settings say of the look. Main thread.
class AppearanceSettingsModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(korvantis::LookStore* look READ look WRITE setLook NOTIFY lookChanged REQUIRED FINAL)
  Q_PROPERTY(QString systemLookText READ systemLookText NOTIFY systemLookTextChanged FINAL)
  Q_PROPERTY(QString themeModeText READ themeModeText NOTIFY themeModeTextChanged FINAL)

 public:
  using QObject::QObject;

  LookStore* look() const { return look_; }
  /// The store that is shown; it must outlive the model.
  void setLook(LookStore* look);

  /// What the system's own look is.
  QString systemLookText() const;
  /// What the chosen look means.
  QString themeModeText() const;

 signals:
  void lookChanged();
  void systemLookTextChanged();
  void themeModeTextChanged();

 private:
  LookStore* look_ = nullptr;
};

}  // namespace korvantis
