#include "ui/panes/InsightsPaneModel.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "core/FixedDecimals.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

constexpr std::int64_t snoozeHours = 24;

QString cpuLoadOf(const SystemSample& system) {
  return textOf(fixedDecimals(system.cpuPercent, 1) + "% (1m " +
                fixedDecimals(system.loadAverage1m, 2) + ")");
}

QString thermalOf(const ThermalSample& thermal, const LookStore& look) {
  return look.formatTemp(thermal.cpuCelsius) +
         textOf(" · " + fixedDecimals(thermal.systemPowerWatts, 1) + "W");
}

}  // namespace

InsightsPaneModel::InsightsPaneModel(QObject* parent) : QObject(parent) {}

void InsightsPaneModel::setStore(MonitorStore* store) {
  using Self = InsightsPaneModel;
  if (store_ == store) return;
  if (store_) {
    for (QObject* const each : std::initializer_list<QObject*>{
             store_, store_->look(), store_->alerts(), store_->remoteAlerts()}) {
      each->disconnect(this);
    }
  }
  store_ = store;
  editor_.setStore(store);
  emit storeChanged();
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &Self::updateSummary);
  connect(store_->look(), &LookStore::temperatureUnitChanged, this, &Self::updateSummary);
  connect(store_, &MonitorStore::insightsChanged, this, &Self::updateInsights);
  connect(store_, &MonitorStore::pinnedInsightIDsChanged, this, &Self::updateInsights);
  connect(store_->alerts(), &AppAlertsStore::appLimitsChanged, this, &Self::updateLimits);
  connect(store_->remoteAlerts(), &RemoteAlertStore::isSendingChanged, this,
          &Self::updateSendBriefText);
  updateSummary();
  updateInsights();
  updateLimits();
  updateSendBriefText();
}

void InsightsPaneModel::updateSummary() {
  using Self = InsightsPaneModel;
  const EngineSnapshot& snapshot = store_->snapshot();
  const SystemSample& system = snapshot.system;
  updateField(this, headline_, store_->whatsWrongHeadline(), &Self::headlineChanged);
  updateField(this, cpuLoad_, cpuLoadOf(system), &Self::cpuLoadChanged);
  updateField(this, memoryPressure_, textOf(label(system.memoryPressure)),
              &Self::memoryPressureChanged);
  updateField(this, thermal_, thermalOf(system.thermal, *store_->look()), &Self::thermalChanged);
  updateField(this, idleServers_, QString::number(snapshot.idleServers.size()),
              &Self::idleServersChanged);
  updateField(this, hasIdleServers_, !snapshot.idleServers.empty(), &Self::hasIdleServersChanged);
}

void InsightsPaneModel::updateInsights() {
  using Self = InsightsPaneModel;
  const std::vector<Insight>& insights = store_->insights();
  updateField(this, findingsTitle_,
              QStringLiteral("ACTIVE & RECENT INSIGHTS (%1)").arg(insights.size()),
              &Self::findingsTitleChanged);
  updateField(this, hasFindings_, !insights.empty(), &Self::hasFindingsChanged);
  insights_.setInsights(insights, store_->pinnedInsightIDs());
}

void InsightsPaneModel::updateLimits() {
  limits_.setLimits(store_->alerts()->appLimits());
}

void InsightsPaneModel::updateSendBriefText() {
  updateField(this, sendBriefText_,
              store_->remoteAlerts()->isSending() ? QStringLiteral("Sending…")
                                                  : QStringLiteral("Send Instant Brief"),
              &InsightsPaneModel::sendBriefTextChanged);
}

const Insight* InsightsPaneModel::insightOf(const QString& insightID) const {
  const auto id = Uuid::fromText(insightID.toStdString());
  if (!store_ || !id) return nullptr;
  const std::vector<Insight>& insights = store_->insights();
  const auto found = std::find_if(insights.begin(), insights.end(),
                                  [&id](const Insight& each) { return each.id == *id; });
  return found == insights.end() ? nullptr : &*found;
}

void InsightsPaneModel::togglePin(const QString& insightID) {
  const Insight* const insight = insightOf(insightID);
  // Copies here and below, since the store drops what it lists.
  if (insight) store_->togglePinInsight(Insight(*insight));
}

void InsightsPaneModel::snooze(const QString& insightID) {
  const Insight* const found = insightOf(insightID);
  if (!found || !found->targetAppID || !found->targetAppName) return;
  const Insight insight = *found;
  store_->alerts()->muteApp(*insight.targetAppID, *insight.targetAppName, std::nullopt,
                            snoozeHours);
  store_->dismissInsight(insight);
}

void InsightsPaneModel::dismiss(const QString& insightID) {
  const Insight* const insight = insightOf(insightID);
  if (insight) store_->dismissInsight(Insight(*insight));
}

void InsightsPaneModel::removeLimit(const QString& limitID) {
  const auto id = Uuid::fromText(limitID.toStdString());
  if (store_ && id) store_->alerts()->removeLimit(*id);
}

void InsightsPaneModel::sendInstantBrief() {
  if (!store_) return;
  RemoteAlertStore& alerts = *store_->remoteAlerts();
  alerts.sendManualBrief(store_->snapshot(), store_->hardwareInfo().chipName,
                         alerts.iMessageEnabled(), alerts.whatsAppEnabled());
}

void InsightsPaneModel::configureBriefs() {
  if (!store_) return;
  store_->setSelectedSettingsTab(QStringLiteral("Remote Alerts"));
  store_->setShowSettingsModal(true);
}

}  // namespace korvantis
