#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace korvantis {

/// The text of a JSON value on one line, keys in the order in which they stand. Bytes that are
/// no UTF-8 become U+FFFD. Absent when an infinite number or no number lies anywhere inside:
/// JSON has no form for them. Any thread.
std::optional<std::string> jsonText(const nlohmann::ordered_json& value);

}  // namespace korvantis
