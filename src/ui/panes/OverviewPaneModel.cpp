#include "ui/panes/OverviewPaneModel.h"

#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

OverviewPaneModel::State stateOf(const EngineSnapshot& snapshot) {
  if (!snapshot.activeStrains.empty()) return OverviewPaneModel::State::Strain;
  if (!snapshot.idleServers.empty()) return OverviewPaneModel::State::ForgottenServers;
  return OverviewPaneModel::State::Nominal;
}

}  // namespace

void OverviewPaneModel::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) {
    store_->disconnect(this);
    store_->look()->disconnect(this);
  }
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &OverviewPaneModel::update);
  // The sentence names a temperature.
  connect(store_->look(), &LookStore::temperatureUnitChanged, this, &OverviewPaneModel::update);
  update();
}

QString OverviewPaneModel::chipName() const {
  return store_ ? textOf(store_->hardwareInfo().chipName) : QString();
}

void OverviewPaneModel::update() {
  updateField(this, state_, stateOf(store_->snapshot()), &OverviewPaneModel::stateChanged);
  updateField(this, headline_, store_->whatsWrongHeadline(), &OverviewPaneModel::headlineChanged);
}

}  // namespace korvantis
