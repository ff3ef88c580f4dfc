#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"

namespace korvantis {

/// The verdict on the machine in the banner of the overview. Main thread.
class OverviewPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(State state READ state NOTIFY stateChanged FINAL)
  Q_PROPERTY(QString headline READ headline NOTIFY headlineChanged FINAL)
  Q_PROPERTY(QString chipName READ chipName NOTIFY storeChanged FINAL)

 public:
  /// What the banner is about, the gravest first.
  enum class State { Strain, ForgottenServers, Nominal };
  Q_ENUM(State)

  using QObject::QObject;

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  State state() const { return state_; }
  /// One sentence on what is wrong right now, or that nothing is.
  const QString& headline() const { return headline_; }
  QString chipName() const;

 signals:
  void storeChanged();
  void stateChanged();
  void headlineChanged();

 private:
  void update();

  MonitorStore* store_ = nullptr;
  State state_ = State::Nominal;
  QString headline_;
};

}  // namespace korvantis
