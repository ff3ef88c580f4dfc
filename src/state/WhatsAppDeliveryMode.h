#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// How WhatsApp is reached. The raw value is what the settings show and what is stored.
enum class WhatsAppDeliveryMode { cloudWebhook, desktopApp };

template <>
struct EnumerationTable<WhatsAppDeliveryMode> {
  using Raw = std::string_view;
  using Row = EnumerationRow<WhatsAppDeliveryMode, Raw>;
  static constexpr std::array rows{
      Row{WhatsAppDeliveryMode::cloudWebhook, "Background API / Webhook (CallMeBot / Custom)"},
      Row{WhatsAppDeliveryMode::desktopApp, "Local WhatsApp App Deep-Link (whatsapp://)"}};
};

template <>
struct CaseNames<WhatsAppDeliveryMode> {
  static constexpr std::array<std::string_view, 2> names{"cloudWebhook", "desktopApp"};
};

}  // namespace korvantis
