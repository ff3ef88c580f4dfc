#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace korvantis {

/// One of several things to choose from, as QML shows it.
struct Choice {
  Q_GADGET
  QML_VALUE_TYPE(choice)
  Q_PROPERTY(QString name MEMBER name FINAL)
  Q_PROPERTY(QString label MEMBER label FINAL)
  Q_PROPERTY(QString shortLabel MEMBER shortLabel FINAL)
  Q_PROPERTY(QString iconName MEMBER iconName FINAL)
  Q_PROPERTY(double value MEMBER value FINAL)

 public:
  /// The name of its case, as a store takes it.
  QString name;
  QString label{};
  /// The same where room is short; may be empty.
  QString shortLabel{};
  /// Its system symbol; may be empty.
  QString iconName{};
  /// What it stands for, where it is a number.
  double value = 0;

  bool operator==(const Choice&) const = default;
};

}  // namespace korvantis
