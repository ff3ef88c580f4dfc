#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// How other programs reach this one, in the settings' words. Main thread.
class IntegrationsModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString socketPathText READ socketPathText CONSTANT FINAL)
  Q_PROPERTY(QString configurationText READ configurationText CONSTANT FINAL)

 public:
  using QObject::QObject;

  static QString socketPathText();
  /// What a client's configuration file has to hold, in lines.
  static QString configurationText();
};

}  // namespace korvantis
