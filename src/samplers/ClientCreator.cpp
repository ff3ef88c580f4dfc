#include "samplers/ClientCreator.h"

#include <charconv>
#include <system_error>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace korvantis {
namespace {

constexpr std::string_view pidWord = "pid ";

bool isASCII(std::string_view text) {
  for (const char character : text) {
    if (static_cast<unsigned char>(character) >= 0x80) return false;
  }
  return true;
}

std::string_view withoutASCIIBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string withoutBlanks(std::string_view text) {
  const icu::UnicodeString characters = icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
  std::int32_t begin = 0;
  std::int32_t end = characters.length();
  // Every blank lies in the basic plane, so one unit is one character here.
  while (begin < end && u_isblank(characters.charAt(begin)) != 0) ++begin;
  while (end > begin && u_isblank(characters.charAt(end - 1)) != 0) --end;
  std::string trimmed;
  characters.tempSubStringBetween(begin, end).toUTF8String(trimmed);
  return trimmed;
}

}  // namespace

std::string trimmedOfBlanks(std::string_view text) {
  return isASCII(text) ? std::string(withoutASCIIBlanks(text)) : withoutBlanks(text);
}

std::optional<std::int32_t> pidOfCreator(std::string_view creator) {
  const std::size_t word = creator.find(pidWord);
  if (word == std::string_view::npos) return std::nullopt;
  const std::string_view rest = creator.substr(word + pidWord.size());
  const std::size_t comma = rest.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  std::string number = trimmedOfBlanks(rest.substr(0, comma));
  // A plus sign belongs to a decimal number too, though not to from_chars.
  if (number.size() > 1 && number[0] == '+' && number[1] != '-') number.erase(0, 1);
  std::int32_t pid = 0;
  const char* const end = number.data() + number.size();
  const auto [stop, error] = std::from_chars(number.data(), end, pid);
  if (error != std::errc() || stop != end) return std::nullopt;
  return pid;
}

std::optional<std::string> nameOfCreator(std::string_view creator) {
  const std::size_t comma = creator.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  std::string name = trimmedOfBlanks(creator.substr(comma + 1));
  return name.empty() ? std::nullopt : std::optional(std::move(name));
}

}  // namespace korvantis
