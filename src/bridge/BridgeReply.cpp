#include "bridge/BridgeReply.h"

#include <utility>

#include "core/JsonText.h"

namespace korvantis {

BridgeReply::BridgeReply(const nlohmann::ordered_json& given) : object(jsonText(given)) {}

BridgeReply::BridgeReply(JsonWriter written) : object(written.takeText()) {}

std::optional<std::string> BridgeReply::message() && {
  if (object) object->push_back('\n');
  return std::move(object);
}

}  // namespace korvantis
