#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"
#include "ui/panes/AppLimitEditor.h"
#include "ui/panes/AppLimitListModel.h"
#include "ui/panes/InsightListModel.h"

namespace korvantis {

/// What the insights pane says and what its buttons do. Each property notifies only when it really
/// changes. Main thread.
class InsightsPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QString headline READ headline NOTIFY headlineChanged FINAL)
  Q_PROPERTY(QString cpuLoad READ cpuLoad NOTIFY cpuLoadChanged FINAL)
  Q_PROPERTY(QString memoryPressure READ memoryPressure NOTIFY memoryPressureChanged FINAL)
  Q_PROPERTY(QString thermal READ thermal NOTIFY thermalChanged FINAL)
  Q_PROPERTY(QString idleServers READ idleServers NOTIFY idleServersChanged FINAL)
  Q_PROPERTY(bool hasIdleServers READ hasIdleServers NOTIFY hasIdleServersChanged FINAL)
  Q_PROPERTY(QString findingsTitle READ findingsTitle NOTIFY findingsTitleChanged FINAL)
  Q_PROPERTY(bool hasFindings READ hasFindings NOTIFY hasFindingsChanged FINAL)
  Q_PROPERTY(QAbstractItemModel* insights READ insights CONSTANT FINAL)
  Q_PROPERTY(QAbstractItemModel* limits READ limits CONSTANT FINAL)
  Q_PROPERTY(korvantis::AppLimitEditor* editor READ editor CONSTANT FINAL)
  Q_PROPERTY(QString sendBriefText READ sendBriefText NOTIFY sendBriefTextChanged FINAL)

 public:
  explicit InsightsPaneModel(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  /// One sentence on what is wrong right now, or that nothing is.
  const QString& headline() const { return headline_; }
  /// Such as "12.5% (1m 1.25)": the load, and the run queue's average over a minute.
  const QString& cpuLoad() const { return cpuLoad_; }
  const QString& memoryPressure() const { return memoryPressure_; }
  /// Such as "62°C · 18.3W".
  const QString& thermal() const { return thermal_; }
  /// How many forgotten servers there are.
  const QString& idleServers() const { return idleServers_; }
  bool hasIdleServers() const { return hasIdleServers_; }
  /// Such as "ACTIVE & RECENT INSIGHTS (3)".
  const QString& findingsTitle() const { return findingsTitle_; }
  bool hasFindings() const { return hasFindings_; }
  InsightListModel* insights() { return &insights_; }
  AppLimitListModel* limits() { return &limits_; }
  AppLimitEditor* editor() { return &editor_; }
  /// What the button says that sends a phone brief now.
  const QString& sendBriefText() const { return sendBriefText_; }

  /// Pins the finding of that id, or unpins it. Here and below an id that is not listed, or no
  /// longer, changes nothing.
  Q_INVOKABLE void togglePin(const QString& insightID);
  /// Mutes the application that the finding is about for a day, and dismisses the finding. Without
  /// such an application nothing happens.
  Q_INVOKABLE void snooze(const QString& insightID);
  /// Takes the finding off the list.
  Q_INVOKABLE void dismiss(const QString& insightID);
  /// Removes the limit of that id.
  Q_INVOKABLE void removeLimit(const QString& limitID);
  /// Sends a phone brief on the last tick over the channels that are switched on.
  Q_INVOKABLE void sendInstantBrief();
  /// Opens the settings of the phone briefs.
  Q_INVOKABLE void configureBriefs();

 signals:
  void storeChanged();
  void headlineChanged();
  void cpuLoadChanged();
  void memoryPressureChanged();
  void thermalChanged();
  void idleServersChanged();
  void hasIdleServersChanged();
  void findingsTitleChanged();
  void hasFindingsChanged();
  void sendBriefTextChanged();

 private:
  void updateSummary();
  void updateInsights();
  void updateLimits();
  void updateSendBriefText();
  const Insight* insightOf(const QString& insightID) const;

  MonitorStore* store_ = nullptr;
  QString headline_;
  QString cpuLoad_;
  QString memoryPressure_;
  QString thermal_;
  QString idleServers_;
  bool hasIdleServers_ = false;
  QString findingsTitle_;
  bool hasFindings_ = false;
  InsightListModel insights_{this};
  AppLimitListModel limits_{this};
  AppLimitEditor editor_{this};
  QString sendBriefText_;
};

}  // namespace korvantis
