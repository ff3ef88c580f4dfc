#include "platform/linux/TextFields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace korvantis {
namespace {

constexpr std::array<bool, 256> blankBytes() {
  std::array<bool, 256> table{};
  for (const char blank : {' ', '\t', '\n', '\r'}) {
    table[static_cast<unsigned char>(blank)] = true;
  }
  return table;
}

constexpr std::array<bool, 256> blanks = blankBytes();

/// An object and no function, so that searches for it are compiled in place.
constexpr auto isBlank = [](char character) {
  return blanks[static_cast<unsigned char>(character)];
};

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, int base) {
  Number value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

}  // namespace

std::optional<std::uint64_t> unsignedNumber(std::string_view text, int base) {
  return wholeNumber<std::uint64_t>(text, base);
}

std::optional<std::int64_t> signedNumber(std::string_view text) {
  return wholeNumber<std::int64_t>(text, 10);
}

std::string_view takeWord(std::string_view& text) {
  const auto begin = std::find_if_not(text.begin(), text.end(), isBlank);
  const auto end = std::find_if(begin, text.end(), isBlank);
  const std::string_view word(begin, end);
  text = std::string_view(end, text.end());
  return word;
}

std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

std::optional<std::string_view> lineField(std::string_view text, std::string_view name) {
  while (text.find('\n') != std::string_view::npos) {
    const std::string_view line = takeLine(text);
    if (line.size() > name.size() && line.starts_with(name) && line[name.size()] == ':') {
      return line.substr(name.size() + 1);
    }
  }
  return std::nullopt;
}

std::optional<std::uint64_t> kilobytesField(std::string_view text, std::string_view name) {
  auto line = lineField(text, name);
  if (!line) return std::nullopt;
  const auto kilobytes = unsignedNumber(takeWord(*line));
  if (!kilobytes || takeWord(*line) != "kB") return std::nullopt;
  if (*kilobytes > std::numeric_limits<std::uint64_t>::max() / 1024) return std::nullopt;
  return *kilobytes * 1024;
}

std::optional<std::uint64_t> numberField(std::string_view text, std::string_view name) {
  auto line = lineField(text, name);
  if (!line) return std::nullopt;
  return unsignedNumber(takeWord(*line));
}

}  // namespace korvantis
