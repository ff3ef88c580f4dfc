#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// `text` without blanks and tabs at its ends, those beyond ASCII included.
std::string trimmedOfBlanks(std::string_view text);

/// The process in the creator text of a user client, such as "pid 123, Name": what stands between
/// the first "pid " and the comma after it. Absent without either, or when that is no decimal
/// 32-bit number. Any thread.
std::optional<std::int32_t> pidOfCreator(std::string_view creator);

/// The name in such a text: all that follows the first comma, trimmed. Absent without a comma or
/// when nothing is left. Any thread.
std::optional<std::string> nameOfCreator(std::string_view creator);

}  // namespace korvantis
