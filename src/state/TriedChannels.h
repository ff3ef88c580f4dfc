#pragma once

#include <string>

#include "state/BriefDelivery.h"
#include "state/BriefDeliveryCalls.h"
#include "state/WhatsAppDeliveryMode.h"

namespace korvantis {

/// One brief and the channels that it goes over: copies of the settings, trimmed, so that a
/// delivery in the background is not touched by what the user types meanwhile.
struct TriedChannels {
  bool sendIMessage = false;
  std::string recipient;
  bool sendWhatsApp = false;
  std::string phone;
  WhatsAppDeliveryMode mode = WhatsAppDeliveryMode::cloudWebhook;
  std::string apiKeyOrWebhook;
  std::string message;
};

/// Whether what was typed for a key is the URL of a webhook: it begins with "http" in any case.
bool namesWebhook(const std::string& apiKeyOrWebhook);

/// Tries each channel in turn. Delivered when every channel that was tried took it; the status
/// holds one text a channel, joined by two blanks, a bar and two blanks. Any thread but the main
/// one, which it needs.
BriefDelivery deliverOver(const TriedChannels& channels, const BriefDeliveryCalls& calls);

}  // namespace korvantis
