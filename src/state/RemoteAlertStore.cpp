#include "state/RemoteAlertStore.h"

#include <QPointer>
#include <algorithm>
#include <utility>

#include "state/BriefText.h"
#include "state/ObservableField.h"
#include "state/TriedChannels.h"

namespace korvantis {

namespace {

constexpr const char* iMessageEnabledKey = "Korvantis.iMessageEnabled";
constexpr const char* iMessageRecipientKey = "Korvantis.iMessageRecipient";
constexpr const char* whatsAppEnabledKey = "Korvantis.whatsAppEnabled";
constexpr const char* whatsAppPhoneKey = "Korvantis.whatsAppPhone";
constexpr const char* whatsAppModeKey = "Korvantis.whatsAppMode";
constexpr const char* whatsAppApiKeyOrWebhookKey = "Korvantis.whatsAppApiKeyOrWebhook";
constexpr const char* notifyOnStrainKey = "Korvantis.notifyOnStrain";
constexpr const char* scheduleKey = "Korvantis.remoteSchedule";
constexpr const char* cooldownMinutesKey = "Korvantis.remoteCooldownMinutes";
constexpr std::int64_t leastCooldownMinutes = 5;

QString storedText(const UserDefaultsCalls& userDefaults, const char* key) {
  return QString::fromStdString(userDefaults.stringForKey(key).value_or(""));
}

template <Tabled Enumeration>
std::optional<Enumeration> storedCase(const UserDefaultsCalls& userDefaults, const char* key) {
  const auto text = userDefaults.stringForKey(key);
  return text ? fromRawValue<Enumeration>(*text) : std::nullopt;
}

std::string trimmed(const QString& text) {
  return text.trimmed().toStdString();
}

}  // namespace

RemoteAlertStore::RemoteAlertStore(UserDefaultsCalls userDefaults, BriefDeliveryCalls delivery,
                                   QObject* parent)
    : QObject(parent),
      userDefaults_(std::move(userDefaults)),
      delivery_(std::move(delivery)),
      lastPeriodicSentAt_(delivery_.clock.now()) {
  loadSettings();
}

void RemoteAlertStore::loadSettings() {
  setIMessageEnabled(userDefaults_.boolForKey(iMessageEnabledKey));
  setIMessageRecipient(storedText(userDefaults_, iMessageRecipientKey));
  setWhatsAppEnabled(userDefaults_.boolForKey(whatsAppEnabledKey));
  setWhatsAppPhone(storedText(userDefaults_, whatsAppPhoneKey));
  if (const auto mode = storedCase<WhatsAppDeliveryMode>(userDefaults_, whatsAppModeKey))
    setWhatsAppMode(*mode);
  setWhatsAppApiKeyOrWebhook(storedText(userDefaults_, whatsAppApiKeyOrWebhookKey));
  if (userDefaults_.hasObjectForKey(notifyOnStrainKey))
    setNotifyOnStrain(userDefaults_.boolForKey(notifyOnStrainKey));
  if (const auto schedule = storedCase<RemoteBriefInterval>(userDefaults_, scheduleKey))
    setSchedule(*schedule);
  const std::int64_t minutes = userDefaults_.integerForKey(cooldownMinutesKey);
  if (minutes >= 1) setCooldownMinutes(minutes);
}

void RemoteAlertStore::setIMessageEnabled(bool isOn) {
  const bool isChange = storeField(iMessageEnabled_, isOn);
  userDefaults_.setBool(iMessageEnabledKey, isOn);
  if (isChange) emit iMessageEnabledChanged();
}

void RemoteAlertStore::setIMessageRecipient(const QString& recipient) {
  const bool isChange = storeField(iMessageRecipient_, recipient);
  userDefaults_.setString(iMessageRecipientKey, iMessageRecipient_.toStdString());
  if (isChange) emit iMessageRecipientChanged();
}

void RemoteAlertStore::setWhatsAppEnabled(bool isOn) {
  const bool isChange = storeField(whatsAppEnabled_, isOn);
  userDefaults_.setBool(whatsAppEnabledKey, isOn);
  if (isChange) emit whatsAppEnabledChanged();
}

void RemoteAlertStore::setWhatsAppPhone(const QString& phone) {
  const bool isChange = storeField(whatsAppPhone_, phone);
  userDefaults_.setString(whatsAppPhoneKey, whatsAppPhone_.toStdString());
  if (isChange) emit whatsAppPhoneChanged();
}

void RemoteAlertStore::setWhatsAppMode(WhatsAppDeliveryMode mode) {
  const bool isChange = storeField(whatsAppMode_, mode);
  userDefaults_.setString(whatsAppModeKey, std::string(rawValue(mode)));
  if (isChange) emit whatsAppModeChanged();
}

void RemoteAlertStore::setWhatsAppApiKeyOrWebhook(const QString& keyOrWebhook) {
  const bool isChange = storeField(whatsAppApiKeyOrWebhook_, keyOrWebhook);
  userDefaults_.setString(whatsAppApiKeyOrWebhookKey, whatsAppApiKeyOrWebhook_.toStdString());
  if (isChange) emit whatsAppApiKeyOrWebhookChanged();
}

void RemoteAlertStore::setNotifyOnStrain(bool notifies) {
  const bool isChange = storeField(notifyOnStrain_, notifies);
  userDefaults_.setBool(notifyOnStrainKey, notifies);
  if (isChange) emit notifyOnStrainChanged();
}

void RemoteAlertStore::setSchedule(RemoteBriefInterval schedule) {
  const bool isChange = storeField(schedule_, schedule);
  userDefaults_.setString(scheduleKey, std::string(rawValue(schedule)));
  if (isChange) emit scheduleChanged();
}

void RemoteAlertStore::setCooldownMinutes(std::int64_t minutes) {
  const bool isChange = storeField(cooldownMinutes_, minutes);
  userDefaults_.setInteger(cooldownMinutesKey, minutes);
  if (isChange) emit cooldownMinutesChanged();
}

void RemoteAlertStore::evaluateTick(const EngineSnapshot& snapshot, const std::string& chipName) {
  if (!iMessageEnabled_ && !whatsAppEnabled_) return;
  const double now = delivery_.clock.now();
  if (sendStrainBriefIfDue(snapshot, chipName, now)) return;
  const auto interval = intervalSeconds(schedule_);
  if (!interval || !(now - lastPeriodicSentAt_ >= *interval)) return;
  lastPeriodicSentAt_ = now;
  dispatchBrief(snapshot, chipName, std::string(rawValue(schedule_)), iMessageEnabled_,
                whatsAppEnabled_);
}

bool RemoteAlertStore::sendStrainBriefIfDue(const EngineSnapshot& snapshot,
                                            const std::string& chipName, double now) {
  if (!notifyOnStrain_ || snapshot.activeStrains.empty()) return false;
  const double cooldown =
      static_cast<double>(std::max(cooldownMinutes_, leastCooldownMinutes)) * 60;
  if (!(now - lastAutoStrainSentAt_ >= cooldown)) return false;
  lastAutoStrainSentAt_ = now;
  dispatchBrief(snapshot, chipName, "Strain Alert", iMessageEnabled_, whatsAppEnabled_);
  return true;
}

void RemoteAlertStore::sendManualBrief(const EngineSnapshot& snapshot, const std::string& chipName,
                                       bool sendIMessage, bool sendWhatsApp) {
  dispatchBrief(snapshot, chipName, "Instant Brief", sendIMessage, sendWhatsApp);
}

void RemoteAlertStore::dispatchBrief(const EngineSnapshot& snapshot, const std::string& chipName,
                                     const std::string& trigger, bool sendIMessage,
                                     bool sendWhatsApp) {
  TriedChannels channels{.sendIMessage = sendIMessage,
                         .recipient = trimmed(iMessageRecipient_),
                         .sendWhatsApp = sendWhatsApp,
                         .phone = trimmed(whatsAppPhone_),
                         .mode = whatsAppMode_,
                         .apiKeyOrWebhook = trimmed(whatsAppApiKeyOrWebhook_),
                         .message = formatBrief(snapshot, chipName, trigger)};
  setStatus(true, false, QStringLiteral("Sending Korvantis brief…"));
  // The delivery can outlive the store.
  const QPointer<RemoteAlertStore> weakSelf(this);
  delivery_.background.detached([weakSelf, calls = delivery_, channels = std::move(channels)] {
    const BriefDelivery outcome = deliverOver(channels, calls);
    calls.mainRunLoop.async([weakSelf, outcome] {
      if (weakSelf) weakSelf->finish(outcome);
    });
  });
}

void RemoteAlertStore::finish(const BriefDelivery& outcome) {
  const bool dateChanges =
      outcome.delivered && storeField(lastSentDate_, Instant{delivery_.clock.now()});
  setStatus(false, !outcome.delivered, QString::fromStdString(outcome.status));
  if (dateChanges) emit lastSentDateChanged();
}

void RemoteAlertStore::setStatus(bool isSending, bool isError, const QString& message) {
  const bool sendingChanges = storeField(isSending_, isSending);
  const bool messageChanges = storeField(lastStatusMessage_, message);
  const bool errorChanges = storeField(lastStatusIsError_, isError);
  if (sendingChanges) emit isSendingChanged();
  if (messageChanges) emit lastStatusMessageChanged();
  if (errorChanges) emit lastStatusIsErrorChanged();
}

void RemoteAlertStore::setLastStatusMessage(const std::optional<QString>& message) {
  if (storeField(lastStatusMessage_, message)) emit lastStatusMessageChanged();
}

void RemoteAlertStore::setLastStatusIsError(bool isError) {
  if (storeField(lastStatusIsError_, isError)) emit lastStatusIsErrorChanged();
}

QString RemoteAlertStore::whatsAppModeName() const {
  return caseText(whatsAppMode_);
}

void RemoteAlertStore::setWhatsAppModeName(const QString& name) {
  if (const auto mode = caseOfText<WhatsAppDeliveryMode>(name)) setWhatsAppMode(*mode);
}

QString RemoteAlertStore::scheduleName() const {
  return caseText(schedule_);
}

void RemoteAlertStore::setScheduleName(const QString& name) {
  if (const auto schedule = caseOfText<RemoteBriefInterval>(name)) setSchedule(*schedule);
}

QString RemoteAlertStore::lastStatusText() const {
  return lastStatusMessage_.value_or(QString());
}

}  // namespace korvantis
