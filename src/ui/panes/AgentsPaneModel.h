#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"
#include "ui/panes/AgentListModel.h"
#include "ui/panes/AgentRows.h"

namespace korvantis {

/// What the agents pane says: the plans' limits and the running agents. Each property notifies
/// only when it really changes. Main thread.
class AgentsPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QList<korvantis::PlanCard> plans READ plans NOTIFY plansChanged FINAL)
  Q_PROPERTY(QString sessionsTitle READ sessionsTitle NOTIFY sessionsTitleChanged FINAL)
  Q_PROPERTY(QAbstractItemModel* sessions READ sessions CONSTANT FINAL)

 public:
  explicit AgentsPaneModel(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  /// In the order of the snapshot.
  const QList<PlanCard>& plans() const { return plans_; }
  /// Such as "LIVE CODING AGENT SESSIONS (3)".
  const QString& sessionsTitle() const { return sessionsTitle_; }
  AgentListModel* sessions() { return &sessions_; }

 signals:
  void storeChanged();
  void plansChanged();
  void sessionsTitleChanged();

 private:
  void update();

  MonitorStore* store_ = nullptr;
  QList<PlanCard> plans_;
  QString sessionsTitle_;
  AgentListModel sessions_;
};

}  // namespace korvantis
