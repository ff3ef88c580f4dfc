#include "state/TriedChannels.h"

#include <QString>

#include "state/RemoteAlertStore.h"

namespace korvantis {

namespace {

BriefDelivery tryIMessage(const TriedChannels& channels, const BriefDeliveryCalls& calls) {
  if (channels.recipient.empty()) return {false, "iMessage: Missing recipient phone/email."};
  return RemoteAlertStore::sendIMessageViaOSAScript(calls, channels.recipient, channels.message);
}

BriefDelivery tryWhatsApp(const TriedChannels& channels, const BriefDeliveryCalls& calls) {
  // A webhook knows its receiver by itself.
  if (channels.phone.empty() && !namesWebhook(channels.apiKeyOrWebhook))
    return {false, "WhatsApp: Missing phone number."};
  return RemoteAlertStore::sendWhatsAppMessage(calls, channels.phone, channels.mode,
                                               channels.apiKeyOrWebhook, channels.message);
}

}  // namespace

bool namesWebhook(const std::string& apiKeyOrWebhook) {
  return QString::fromStdString(apiKeyOrWebhook).toLower().startsWith(QLatin1String("http"));
}

BriefDelivery deliverOver(const TriedChannels& channels, const BriefDeliveryCalls& calls) {
  if (!channels.sendIMessage && !channels.sendWhatsApp)
    return {false, "Enable iMessage or WhatsApp first."};
  if (!channels.sendWhatsApp) return tryIMessage(channels, calls);
  if (!channels.sendIMessage) return tryWhatsApp(channels, calls);
  const BriefDelivery iMessage = tryIMessage(channels, calls);
  const BriefDelivery whatsApp = tryWhatsApp(channels, calls);
  return {iMessage.delivered && whatsApp.delivered, iMessage.status + "  |  " + whatsApp.status};
}

}  // namespace korvantis
