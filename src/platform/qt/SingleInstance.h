#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

namespace korvantis {

/// Sees to it that a second launch in one session brings the first program to the front instead
/// of starting twice. Programs with different data folders don't know of each other. Main thread.
class SingleInstance : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.korvantis.Instance")

 public:
  /// `bus` is the session's; `dataFolder` tells programs with other data apart.
  SingleInstance(QDBusConnection bus, const QString& dataFolder, QObject* parent = nullptr);

  /// True when this program is the first; where there is no bus, every one is. False when another
  /// one was there: it has been asked to come to the front.
  bool claim();

  /// The name on the bus of the program with this data folder.
  static QString serviceName(const QString& dataFolder);

 public slots:
  /// Asked for by a later launch.
  Q_SCRIPTABLE void Activate() { emit activationRequested(); }

 signals:
  void activationRequested();

 private:
  QDBusConnection bus_;
  QString service_;
};

}  // namespace korvantis
