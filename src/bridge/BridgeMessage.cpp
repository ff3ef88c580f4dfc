#include "bridge/BridgeMessage.h"

#include "core/JsonText.h"

namespace korvantis {

std::optional<nlohmann::json> objectFromMessage(std::string_view text) {
  std::optional<nlohmann::json> message = parsedJson(text);
  if (!message->is_object()) return std::nullopt;
  return message;
}

std::optional<std::string> messageFromObject(const nlohmann::ordered_json& object) {
  std::optional<std::string> text = jsonText(object);
  if (text) text->push_back('\n');
  return text;
}

}  // namespace korvantis
