#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <optional>
#include <string>

#include "core/EngineSnapshot.h"
#include "core/Instant.h"
#include "platform/UserDefaultsCalls.h"
#include "state/BriefDelivery.h"
#include "state/BriefDeliveryCalls.h"
#include "state/RemoteBriefInterval.h"
#include "state/WhatsAppDeliveryMode.h"

namespace korvantis {

/// The phone briefs: the settings of both channels, when a brief is due, and how the last one
/// fared. The nine settings outlive the program and are written at every assignment; setters store
/// even an equal value, only a real change notifies. In QML an enumeration is the name of its case
/// ("every4Hours"); a name that is none changes nothing. The key or webhook appears in no status.
/// Main thread.
class RemoteAlertStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")
  Q_PROPERTY(bool iMessageEnabled READ iMessageEnabled WRITE setIMessageEnabled NOTIFY
                 iMessageEnabledChanged FINAL)
  Q_PROPERTY(QString iMessageRecipient READ iMessageRecipient WRITE setIMessageRecipient NOTIFY
                 iMessageRecipientChanged FINAL)
  Q_PROPERTY(bool whatsAppEnabled READ whatsAppEnabled WRITE setWhatsAppEnabled NOTIFY
                 whatsAppEnabledChanged FINAL)
  Q_PROPERTY(QString whatsAppPhone READ whatsAppPhone WRITE setWhatsAppPhone NOTIFY
                 whatsAppPhoneChanged FINAL)
  Q_PROPERTY(QString whatsAppMode READ whatsAppModeName WRITE setWhatsAppModeName NOTIFY
                 whatsAppModeChanged FINAL)
  Q_PROPERTY(QString whatsAppApiKeyOrWebhook READ whatsAppApiKeyOrWebhook WRITE
                 setWhatsAppApiKeyOrWebhook NOTIFY whatsAppApiKeyOrWebhookChanged FINAL)
  Q_PROPERTY(bool notifyOnStrain READ notifyOnStrain WRITE setNotifyOnStrain NOTIFY
                 notifyOnStrainChanged FINAL)
  Q_PROPERTY(QString schedule READ scheduleName WRITE setScheduleName NOTIFY scheduleChanged FINAL)
  Q_PROPERTY(qint64 cooldownMinutes READ cooldownMinutes WRITE setCooldownMinutes NOTIFY
                 cooldownMinutesChanged FINAL)
  Q_PROPERTY(bool isSending READ isSending NOTIFY isSendingChanged FINAL)
  Q_PROPERTY(QString lastStatusMessage READ lastStatusText NOTIFY lastStatusMessageChanged FINAL)
  Q_PROPERTY(bool lastStatusIsError READ lastStatusIsError NOTIFY lastStatusIsErrorChanged FINAL)
  Q_PROPERTY(std::optional<korvantis::Instant> lastSentDate READ lastSentDate NOTIFY
                 lastSentDateChanged FINAL)

 public:
  /// Takes the stored settings and writes them back. The next periodic brief is a whole interval
  /// from now.
  RemoteAlertStore(UserDefaultsCalls userDefaults, BriefDeliveryCalls delivery,
                   QObject* parent = nullptr);

  /// Whether briefs go out by iMessage.
  bool iMessageEnabled() const { return iMessageEnabled_; }
  void setIMessageEnabled(bool isOn);

  /// A phone number or mail address, as typed.
  const QString& iMessageRecipient() const { return iMessageRecipient_; }
  void setIMessageRecipient(const QString& recipient);

  /// Whether briefs go out by WhatsApp.
  bool whatsAppEnabled() const { return whatsAppEnabled_; }
  void setWhatsAppEnabled(bool isOn);

  /// A phone number, as typed.
  const QString& whatsAppPhone() const { return whatsAppPhone_; }
  void setWhatsAppPhone(const QString& phone);

  /// How WhatsApp is reached.
  WhatsAppDeliveryMode whatsAppMode() const { return whatsAppMode_; }
  void setWhatsAppMode(WhatsAppDeliveryMode mode);

  /// A CallMeBot key, or the URL of a webhook, as typed. A secret.
  const QString& whatsAppApiKeyOrWebhook() const { return whatsAppApiKeyOrWebhook_; }
  void setWhatsAppApiKeyOrWebhook(const QString& keyOrWebhook);

  /// Whether strain sends a brief.
  bool notifyOnStrain() const { return notifyOnStrain_; }
  void setNotifyOnStrain(bool notifies);

  /// How often a brief goes out without strain.
  RemoteBriefInterval schedule() const { return schedule_; }
  void setSchedule(RemoteBriefInterval schedule);

  /// Least minutes between two strain briefs; below 5 it counts as 5 but stays as it is.
  std::int64_t cooldownMinutes() const { return cooldownMinutes_; }
  void setCooldownMinutes(std::int64_t minutes);

  /// A delivery is under way; for display only.
  bool isSending() const { return isSending_; }
  /// How the last brief fared; absent before the first. QML gets an empty text for absent.
  const std::optional<QString>& lastStatusMessage() const { return lastStatusMessage_; }
  void setLastStatusMessage(const std::optional<QString>& message);
  /// `lastStatusMessage` tells of a failure.
  bool lastStatusIsError() const { return lastStatusIsError_; }
  void setLastStatusIsError(bool isError);
  /// When a brief was last delivered on all channels that were tried.
  const std::optional<Instant>& lastSentDate() const { return lastSentDate_; }

  /// Decides after a tick whether a brief is due, and sends it in the background.
  void evaluateTick(const EngineSnapshot& snapshot, const std::string& chipName);

  /// Sends a brief now over the channels named, whatever the settings and clocks say.
  void sendManualBrief(const EngineSnapshot& snapshot, const std::string& chipName,
                       bool sendIMessage, bool sendWhatsApp);

  /// Has Messages send `message` through AppleScript. Holds the calling thread up to 5 seconds;
  /// any thread but the main one.
  static BriefDelivery sendIMessageViaOSAScript(const BriefDeliveryCalls& calls,
                                                const std::string& recipient,
                                                const std::string& message);

  /// Sends `message` to WhatsApp: through CallMeBot, a webhook, the local application or the web.
  /// The arguments are trimmed. Holds the calling thread up to 5 seconds on the network; any
  /// thread but the main one.
  static BriefDelivery sendWhatsAppMessage(const BriefDeliveryCalls& calls,
                                           const std::string& phone, WhatsAppDeliveryMode mode,
                                           const std::string& apiKeyOrWebhook,
                                           const std::string& message);

  QString whatsAppModeName() const;
  void setWhatsAppModeName(const QString& name);
  QString scheduleName() const;
  void setScheduleName(const QString& name);
  QString lastStatusText() const;

 signals:
  void iMessageEnabledChanged();
  void iMessageRecipientChanged();
  void whatsAppEnabledChanged();
  void whatsAppPhoneChanged();
  void whatsAppModeChanged();
  void whatsAppApiKeyOrWebhookChanged();
  void notifyOnStrainChanged();
  void scheduleChanged();
  void cooldownMinutesChanged();
  void isSendingChanged();
  void lastStatusMessageChanged();
  void lastStatusIsErrorChanged();
  void lastSentDateChanged();

 private:
  void loadSettings();
  bool sendStrainBriefIfDue(const EngineSnapshot& snapshot, const std::string& chipName,
                            double now);
  void dispatchBrief(const EngineSnapshot& snapshot, const std::string& chipName,
                     const std::string& trigger, bool sendIMessage, bool sendWhatsApp);
  void finish(const BriefDelivery& outcome);
  void setStatus(bool isSending, bool isError, const QString& message);

  UserDefaultsCalls userDefaults_;
  BriefDeliveryCalls delivery_;
  bool iMessageEnabled_ = false;
  QString iMessageRecipient_;
  bool whatsAppEnabled_ = false;
  QString whatsAppPhone_;
  WhatsAppDeliveryMode whatsAppMode_ = WhatsAppDeliveryMode::cloudWebhook;
  QString whatsAppApiKeyOrWebhook_;
  bool notifyOnStrain_ = true;
  RemoteBriefInterval schedule_ = RemoteBriefInterval::off;
  std::int64_t cooldownMinutes_ = 30;
  bool isSending_ = false;
  std::optional<QString> lastStatusMessage_;
  bool lastStatusIsError_ = false;
  std::optional<Instant> lastSentDate_;
  /// Seconds since 1970; so long ago that the first strain of a run is told at once.
  double lastAutoStrainSentAt_ = -62135769600.0;
  double lastPeriodicSentAt_;
};

}  // namespace korvantis
