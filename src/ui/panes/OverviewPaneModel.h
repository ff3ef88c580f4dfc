#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"
#include "ui/panes/CardRowListModel.h"
#include "ui/panes/OverviewCards.h"

namespace korvantis {

/// The overview: the verdict on the machine in the banner, and the words of its eight cards. Each
/// property notifies only when it really changes. Main thread.
class OverviewPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(State state READ state NOTIFY stateChanged FINAL)
  Q_PROPERTY(QString headline READ headline NOTIFY headlineChanged FINAL)
  Q_PROPERTY(QString chipName READ chipName NOTIFY storeChanged FINAL)
  Q_PROPERTY(QString stopServersText READ stopServersText NOTIFY stopServersTextChanged FINAL)
  Q_PROPERTY(korvantis::CPUCard cpu READ cpu NOTIFY cpuChanged FINAL)
  Q_PROPERTY(korvantis::MemoryCard memory READ memory NOTIFY memoryChanged FINAL)
  Q_PROPERTY(korvantis::GPUCard gpu READ gpu NOTIFY gpuChanged FINAL)
  Q_PROPERTY(korvantis::ThermalCard thermal READ thermal NOTIFY thermalChanged FINAL)
  Q_PROPERTY(korvantis::NetworkCard network READ network NOTIFY networkChanged FINAL)
  Q_PROPERTY(korvantis::DiskCard disk READ disk NOTIFY diskChanged FINAL)
  Q_PROPERTY(QList<double> diskHistory READ diskHistory NOTIFY diskHistoryChanged FINAL)
  Q_PROPERTY(korvantis::BatteryCard battery READ battery NOTIFY batteryChanged FINAL)
  Q_PROPERTY(korvantis::TopAppsCard topApps READ topApps NOTIFY topAppsChanged FINAL)
  Q_PROPERTY(QAbstractItemModel* largestApps READ largestApps CONSTANT FINAL)

 public:
  /// What the banner is about, the gravest first.
  enum class State { Strain, ForgottenServers, Nominal };
  Q_ENUM(State)

  explicit OverviewPaneModel(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  State state() const { return state_; }
  /// One sentence on what is wrong right now, or that nothing is.
  const QString& headline() const { return headline_; }
  QString chipName() const;
  /// What the button says that stops all forgotten servers; empty when it is not offered.
  const QString& stopServersText() const { return stopServersText_; }
  const CPUCard& cpu() const { return cpu_; }
  const MemoryCard& memory() const { return memory_; }
  const GPUCard& gpu() const { return gpu_; }
  const ThermalCard& thermal() const { return thermal_; }
  const NetworkCard& network() const { return network_; }
  const DiskCard& disk() const { return disk_; }
  const QList<double>& diskHistory() const { return diskHistory_; }
  const BatteryCard& battery() const { return battery_; }
  const TopAppsCard& topApps() const { return topApps_; }
  /// The applications with the most memory.
  CardRowListModel* largestApps() { return &largestApps_; }

  /// From here to `release`, ticks leave the applications listed as they are: while a button is
  /// pressed, its row must not move from under the pointer.
  Q_INVOKABLE void hold();
  /// Lets the list catch up, once what the release of the button does is done.
  Q_INVOKABLE void release();

  /// Asks the application with that id to quit; nothing when it is gone.
  Q_INVOKABLE void quitApp(const QString& id);
  /// Sets the first fan to `rpm`.
  Q_INVOKABLE void applyManualRPM(double rpm);
  /// Gives the first fan back to the system.
  Q_INVOKABLE void restoreAutomaticFan();

 signals:
  void storeChanged();
  void stateChanged();
  void headlineChanged();
  void stopServersTextChanged();
  void cpuChanged();
  void memoryChanged();
  void gpuChanged();
  void thermalChanged();
  void networkChanged();
  void diskChanged();
  void diskHistoryChanged();
  void batteryChanged();
  void topAppsChanged();

 private:
  void update();
  void updateBanner();
  void updateLargestApps();

  MonitorStore* store_ = nullptr;
  State state_ = State::Nominal;
  QString headline_;
  QString stopServersText_;
  CPUCard cpu_;
  MemoryCard memory_;
  GPUCard gpu_;
  ThermalCard thermal_;
  NetworkCard network_;
  DiskCard disk_;
  QList<double> diskHistory_;
  BatteryCard battery_;
  TopAppsCard topApps_;
  CardRowListModel largestApps_{this};
  bool isHeld_ = false;
};

}  // namespace korvantis
