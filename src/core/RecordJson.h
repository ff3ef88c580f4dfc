#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// A record as the text of a JSON object on one line: its fields are the keys, in the order in
/// which the record lists them; an absent optional is left out; an enumeration is its raw value.
/// Bytes of texts that are no UTF-8 become U+FFFD. Absent when any number in it is infinite or
/// none. For the records that RecordJson.cpp names. Any thread; never throws.
template <typename Record>
std::optional<std::string> encodeJson(const Record& record);

/// A record out of the text of a JSON object; absent when anything in it is damaged, missing, of
/// another type or out of range. A missing or null optional is absent; unknown keys are passed
/// over. For the records that RecordJson.cpp names. Any thread; never throws, however deep the
/// text is nested.
template <typename Record>
std::optional<Record> decodeJson(std::string_view text);

}  // namespace korvantis
