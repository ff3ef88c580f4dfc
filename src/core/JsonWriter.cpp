#include "core/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace korvantis {

namespace {

constexpr std::size_t longestNumber = 64;

/// Which bytes can't stand for themselves inside a JSON text.
constexpr std::array<bool, 256> specialBytes = [] {
  std::array<bool, 256> special{};
  for (std::size_t byte = 0; byte < special.size(); ++byte) {
    special[byte] = byte < 0x20 || byte >= 0x80 || byte == '"' || byte == '\\';
  }
  return special;
}();

}  // namespace

void JsonWriter::key(std::string_view name) {
  putComma();
  putText(name);
  put(':');
  isBehindValue = false;
}

std::optional<std::string> JsonWriter::takeText() {
  if (!isFinite) return std::nullopt;
  written.resize(used);
  return std::move(written);
}

void JsonWriter::open(char bracket) {
  putComma();
  put(bracket);
  isBehindValue = false;
}

void JsonWriter::close(char bracket) {
  put(bracket);
  isBehindValue = true;
}

void JsonWriter::text(std::string_view words) {
  putComma();
  putText(words);
}

void JsonWriter::literal(std::string_view word) {
  putComma();
  put(word);
}

/// As the library does: the shortest digits that read back as the same, never without a point.
void JsonWriter::number(double given) {
  putComma();
  isFinite = isFinite && std::isfinite(given);
  if (!isFinite) return;
  char* const place = room(longestNumber);
  takeUntil(nlohmann::detail::to_chars(place, place + longestNumber, given));
}

void JsonWriter::integer(std::int64_t given) {
  putComma();
  char* const place = room(longestNumber);
  takeUntil(std::to_chars(place, place + longestNumber, given).ptr);
}

void JsonWriter::integer(std::uint64_t given) {
  putComma();
  char* const place = room(longestNumber);
  takeUntil(std::to_chars(place, place + longestNumber, given).ptr);
}

/// Room for so many bytes behind what has been written.
char* JsonWriter::room(std::size_t count) {
  if (written.size() - used < count) written.resize(std::max(2 * written.size(), used + count));
  return written.data() + used;
}

/// Counts what has been put into the room up to `end` as written.
void JsonWriter::takeUntil(const char* end) {
  used = static_cast<std::size_t>(end - written.data());
}

void JsonWriter::put(char character) {
  *room(1) = character;
  ++used;
}

void JsonWriter::put(std::string_view bytes) {
  std::ranges::copy(bytes, room(bytes.size()));
  used += bytes.size();
}

/// The comma in front of the next piece, where one belongs there.
void JsonWriter::putComma() {
  if (isBehindValue) put(',');
  isBehindValue = true;
}

/// Copies and looks in one pass, since nearly all texts are plain; one with anything special in it
/// is the library's to write.
void JsonWriter::putText(std::string_view words) {
  char* place = room(words.size() + 2);
  bool isSpecial = false;
  *place++ = '"';
  for (const char character : words) {
    isSpecial |= specialBytes[static_cast<unsigned char>(character)];
    *place++ = character;
  }
  *place = '"';
  if (isSpecial) {
    put(nlohmann::json(words).dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace));
    return;
  }
  used += words.size() + 2;
}

}  // namespace korvantis
