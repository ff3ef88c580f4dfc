#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "ui/views/Choice.h"

namespace korvantis {

/// What the settings offer to choose from, each list in the order shown. Main thread.
class SettingsChoices : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QStringList tabs READ tabs CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> readouts READ readouts CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> displayStyles READ displayStyles CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> colorModes READ colorModes CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> palettes READ palettes CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> temperatureUnits READ temperatureUnits CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> retentions READ retentions CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> densities READ densities CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> themeModes READ themeModes CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> intervals READ intervals CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> deliveryModes READ deliveryModes CONSTANT FINAL)
  Q_PROPERTY(QList<korvantis::Choice> schedules READ schedules CONSTANT FINAL)

 public:
  using QObject::QObject;

  /// The titles of the tabs, which are also what the store knows them by.
  static QStringList tabs();
  static QList<Choice> readouts();
  static QList<Choice> displayStyles();
  static QList<Choice> colorModes();
  static QList<Choice> palettes();
  static QList<Choice> temperatureUnits();
  static QList<Choice> retentions();
  static QList<Choice> densities();
  static QList<Choice> themeModes();
  static QList<Choice> intervals();
  static QList<Choice> deliveryModes();
  static QList<Choice> schedules();
};

}  // namespace korvantis
