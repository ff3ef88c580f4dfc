#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// The text of a JSON value on one line, keys in the order in which they stand. Bytes that are
/// no UTF-8 become U+FFFD. Absent when an infinite number or no number lies anywhere inside:
/// JSON has no form for them. Any thread.
std::optional<std::string> jsonText(const nlohmann::ordered_json& value);

/// The JSON value in a whole text; a discarded one when the text is anything else. A zero byte is
/// no part of any JSON text, though the library takes it for the end of one. Any thread.
nlohmann::json parsedJson(std::string_view text);

}  // namespace korvantis
