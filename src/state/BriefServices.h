#pragma once

#include <string_view>

/// The hosts of the services that carry a brief, and the program that drives Messages. Everything
/// that may have to follow a change outside stands here.
namespace korvantis::briefServices {

/// CallMeBot's endpoint; always reached by https.
inline constexpr std::string_view callMeBotHost = "api.callmebot.com";
/// WhatsApp's click-to-chat links; always https.
inline constexpr std::string_view clickToChatHost = "wa.me";
/// Runs an AppleScript.
inline constexpr std::string_view osascript = "/usr/bin/osascript";

}  // namespace korvantis::briefServices
