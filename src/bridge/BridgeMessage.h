#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

/// One message of the local bridge: a JSON object on one line. Any thread; nothing throws.
namespace korvantis {

/// The object that `text` is. Absent for anything else: damaged text, a list, a bare value, or
/// anything but white space behind the object.
std::optional<nlohmann::json> objectFromMessage(std::string_view text);

/// The object as a line with its line feed, keys in the order in which they stand. Absent when an
/// infinite number or no number lies anywhere inside.
std::optional<std::string> messageFromObject(const nlohmann::ordered_json& object);

}  // namespace korvantis
