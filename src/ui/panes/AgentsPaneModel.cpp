#include "ui/panes/AgentsPaneModel.h"

#include <utility>
#include <vector>

#include "ui/panes/AgentWords.h"
#include "ui/views/ModelText.h"

namespace korvantis {

AgentsPaneModel::AgentsPaneModel(QObject* parent) : QObject(parent), sessions_(this) {}

void AgentsPaneModel::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) store_->disconnect(this);
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &AgentsPaneModel::update);
  update();
}

void AgentsPaneModel::update() {
  const EngineSnapshot& snapshot = store_->snapshot();
  QList<PlanCard> plans;
  for (const PlanLimitStatus& limit : snapshot.planLimits) {
    plans.append(AgentWords::planCard(limit));
  }
  updateField(this, plans_, std::move(plans), &AgentsPaneModel::plansChanged);
  updateField(this, sessionsTitle_,
              QStringLiteral("LIVE CODING AGENT SESSIONS (%1)").arg(snapshot.agentSessions.size()),
              &AgentsPaneModel::sessionsTitleChanged);
  std::vector<AgentSessionRow> rows;
  rows.reserve(snapshot.agentSessions.size());
  for (const AgentSession& session : snapshot.agentSessions) {
    rows.push_back(AgentWords::sessionRow(session));
  }
  sessions_.setRows(std::move(rows));
}

}  // namespace korvantis
