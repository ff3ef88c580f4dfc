#include "ui/settings/RemoteAlertsModel.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "state/BriefText.h"
#include "ui/views/ModelText.h"

namespace korvantis {

void RemoteAlertsModel::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) {
    store_->disconnect(this);
    store_->remoteAlerts()->disconnect(this);
  }
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  const RemoteAlertStore* const alerts = store_->remoteAlerts();
  connect(store_, &MonitorStore::snapshotChanged, this, &RemoteAlertsModel::takeSnapshot);
  connect(alerts, &RemoteAlertStore::cooldownMinutesChanged, this,
          &RemoteAlertsModel::takeCooldown);
  connect(alerts, &RemoteAlertStore::lastStatusMessageChanged, this,
          &RemoteAlertsModel::takeStatus);
  connect(alerts, &RemoteAlertStore::isSendingChanged, this, &RemoteAlertsModel::takeSending);
  takeSnapshot();
  takeCooldown();
  takeSending();
}

void RemoteAlertsModel::takeSnapshot() {
  const std::string brief =
      formatBrief(store_->snapshot(), store_->hardwareInfo().chipName, "Preview");
  updateField(this, previewText_, textOf(brief), &RemoteAlertsModel::previewTextChanged);
}

void RemoteAlertsModel::takeCooldown() {
  const auto minutes = static_cast<qlonglong>(store_->remoteAlerts()->cooldownMinutes());
  updateField(this, cooldownText_, QStringLiteral("Cooldown: %1 min").arg(QString::number(minutes)),
              &RemoteAlertsModel::cooldownTextChanged);
}

void RemoteAlertsModel::takeStatus() {
  const RemoteAlertStore& alerts = *store_->remoteAlerts();
  updateField(this, statusText_, alerts.isSending() ? QString() : alerts.lastStatusText(),
              &RemoteAlertsModel::statusTextChanged);
}

void RemoteAlertsModel::takeSending() {
  if (!store_->remoteAlerts()->isSending()) isIMessagePressed_ = isWhatsAppPressed_ = false;
  takeStatus();
  emit testTextsChanged();
}

int RemoteAlertsModel::cooldownMinutes() const {
  if (!store_) return 0;
  constexpr std::int64_t least = std::numeric_limits<int>::min();
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(store_->remoteAlerts()->cooldownMinutes(), least, most));
}

bool RemoteAlertsModel::saysSending(bool isPressed) const {
  if (!store_ || !store_->remoteAlerts()->isSending()) return false;
  return isPressed || (!isIMessagePressed_ && !isWhatsAppPressed_);
}

QString RemoteAlertsModel::testIMessageText() const {
  return saysSending(isIMessagePressed_) ? QStringLiteral("Sending…")
                                         : QStringLiteral("Test iMessage");
}

QString RemoteAlertsModel::testWhatsAppText() const {
  return saysSending(isWhatsAppPressed_) ? QStringLiteral("Sending…")
                                         : QStringLiteral("Test WhatsApp");
}

void RemoteAlertsModel::testIMessage() {
  test(true, false);
}

void RemoteAlertsModel::testWhatsApp() {
  test(false, true);
}

void RemoteAlertsModel::test(bool iMessage, bool whatsApp) {
  if (!store_) return;
  isIMessagePressed_ = isIMessagePressed_ || iMessage;
  isWhatsAppPressed_ = isWhatsAppPressed_ || whatsApp;
  store_->remoteAlerts()->sendManualBrief(store_->snapshot(), store_->hardwareInfo().chipName,
                                          iMessage, whatsApp);
  emit testTextsChanged();
}

}  // namespace korvantis
