#include "ui/panes/OverviewPaneModel.h"

#include <algorithm>
#include <utility>

#include "ui/panes/OverviewCardWords.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

OverviewPaneModel::State stateOf(const EngineSnapshot& snapshot) {
  if (!snapshot.activeStrains.empty()) return OverviewPaneModel::State::Strain;
  if (!snapshot.idleServers.empty()) return OverviewPaneModel::State::ForgottenServers;
  return OverviewPaneModel::State::Nominal;
}

QString stopServersTextOf(const EngineSnapshot& snapshot) {
  if (stateOf(snapshot) != OverviewPaneModel::State::ForgottenServers) return {};
  const auto count = snapshot.idleServers.size();
  return QStringLiteral("Stop %1 Idle Server").arg(count) + (count == 1 ? "" : "s");
}

}  // namespace

OverviewPaneModel::OverviewPaneModel(QObject* parent) : QObject(parent) {}

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
  // Temperatures follow their unit and their threshold at once.
  connect(store_->look(), &LookStore::temperatureUnitChanged, this, &OverviewPaneModel::update);
  connect(store_->look(), &LookStore::hotThresholdCelsiusChanged, this, &OverviewPaneModel::update);
  update();
}

QString OverviewPaneModel::chipName() const {
  return store_ ? textOf(store_->hardwareInfo().chipName) : QString();
}

void OverviewPaneModel::updateBanner() {
  using Self = OverviewPaneModel;
  const EngineSnapshot& snapshot = store_->snapshot();
  updateField(this, state_, stateOf(snapshot), &Self::stateChanged);
  updateField(this, headline_, store_->whatsWrongHeadline(), &Self::headlineChanged);
  updateField(this, stopServersText_, stopServersTextOf(snapshot), &Self::stopServersTextChanged);
}

void OverviewPaneModel::update() {
  using Self = OverviewPaneModel;
  namespace Words = OverviewCardWords;
  const EngineSnapshot& snapshot = store_->snapshot();
  const HardwareInfo& hardware = store_->hardwareInfo();
  const LookStore& look = *store_->look();
  updateBanner();
  updateField(this, cpu_, Words::cpu(snapshot, hardware), &Self::cpuChanged);
  updateField(this, memory_, Words::memory(snapshot.system), &Self::memoryChanged);
  updateField(this, gpu_, Words::gpu(snapshot.system, hardware), &Self::gpuChanged);
  updateField(this, thermal_, Words::thermal(snapshot.system.thermal, look), &Self::thermalChanged);
  updateField(this, network_, Words::network(snapshot), &Self::networkChanged);
  updateField(this, disk_, Words::disk(snapshot), &Self::diskChanged);
  updateField(this, diskHistory_,
              Words::diskHistory(store_->diskReadHistory(), store_->diskWriteHistory()),
              &Self::diskHistoryChanged);
  updateField(this, battery_, Words::battery(snapshot, look), &Self::batteryChanged);
  updateField(this, topApps_, Words::topApps(snapshot), &Self::topAppsChanged);
  updateLargestApps();
}

void OverviewPaneModel::updateLargestApps() {
  if (store_ && !isHeld_) largestApps_.setRows(OverviewCardWords::largestApps(store_->snapshot()));
}

void OverviewPaneModel::hold() {
  isHeld_ = true;
}

void OverviewPaneModel::release() {
  if (!std::exchange(isHeld_, false)) return;
  // Later: the button is still at work for the row that it was pressed in.
  QMetaObject::invokeMethod(this, &OverviewPaneModel::updateLargestApps, Qt::QueuedConnection);
}

void OverviewPaneModel::quitApp(const QString& id) {
  if (!store_) return;
  const auto& groups = store_->snapshot().appGroups;
  const auto found = std::find_if(groups.begin(), groups.end(),
                                  [&](const AppGroup& group) { return textOf(group.id) == id; });
  if (found == groups.end()) return;
  // A copy: what follows may bring a new tick.
  const AppGroup group = *found;
  store_->quitApp(group, false);
}

void OverviewPaneModel::applyManualRPM(double rpm) {
  if (store_) store_->setFanManual(thermal_.fanID, rpm);
}

void OverviewPaneModel::restoreAutomaticFan() {
  if (store_) store_->setFanManual(thermal_.fanID, std::nullopt);
}

}  // namespace korvantis
