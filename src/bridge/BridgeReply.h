#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "core/JsonWriter.h"

namespace korvantis {

/// What answers one request of the local bridge: a JSON object, kept as the text that goes over
/// the wire. As a tree of values a reply of many rows would cost several times as much.
class BridgeReply {
 public:
  /// The reply of these keys and values, in the order in which they stand.
  BridgeReply(const nlohmann::ordered_json& object);

  /// The object that has been written.
  explicit BridgeReply(JsonWriter written);

  /// The object on one line; absent when an infinite number or no number lies anywhere inside.
  const std::optional<std::string>& text() const { return object; }

  /// The same as a message, with its line feed.
  std::optional<std::string> message() &&;

 private:
  std::optional<std::string> object;
};

}  // namespace korvantis
