#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace korvantis {

/// A whole text as an unsigned number in `base`; absent when it is empty, holds anything but
/// digits, or does not fit.
std::optional<std::uint64_t> unsignedNumber(std::string_view text, int base = 10);

/// A whole text as a signed number; absent when it is none or does not fit.
std::optional<std::int64_t> signedNumber(std::string_view text);

/// Takes the next word off the front of `text`, with the blanks, tabs and newlines before it;
/// empty at the end.
std::string_view takeWord(std::string_view& text);

/// Takes the next line off the front of `text`, without its newline.
std::string_view takeLine(std::string_view& text);

/// What stands after "name:" on the first whole line that begins so; absent when there is none.
/// A line cut off before its newline counts as missing: its figure may be cut too.
std::optional<std::string_view> lineField(std::string_view text, std::string_view name);

/// The number on such a line that ends in "kB", in bytes; absent when it is none.
std::optional<std::uint64_t> kilobytesField(std::string_view text, std::string_view name);

/// The first number on such a line; absent when it is none.
std::optional<std::uint64_t> numberField(std::string_view text, std::string_view name);

}  // namespace korvantis
