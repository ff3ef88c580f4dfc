#include "core/JsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace korvantis {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t longestNumber = 64;
constexpr std::size_t usualBytes = 1024;

/// Which bytes can't stand for themselves inside a JSON text.
constexpr std::array<bool, 256> specialBytes = [] {
  std::array<bool, 256> special{};
  for (std::size_t byte = 0; byte < special.size(); ++byte) {
    special[byte] = byte < 0x20 || byte >= 0x80 || byte == '"' || byte == '\\';
  }
  return special;
}();

/// Writes what the library's own `dump` would write, quicker: nearly all texts are plain, and
/// infinite numbers are seen on the way.
class JsonWriter {
 public:
  /// What has been written; ends the writing.
  std::string takeText() {
    text.resize(used);
    return std::move(text);
  }

  /// False when the value holds a number for which JSON has no form.
  bool write(const Json& value) {
    switch (value.type()) {
      case Json::value_t::object: return writeObject(value.get_ref<const Json::object_t&>());
      case Json::value_t::array: return writeList(value.get_ref<const Json::array_t&>());
      case Json::value_t::string: writeText(value.get_ref<const std::string&>()); return true;
      case Json::value_t::number_integer: writeInteger(value.get<std::int64_t>()); return true;
      case Json::value_t::number_unsigned: writeInteger(value.get<std::uint64_t>()); return true;
      case Json::value_t::number_float: return writeNumber(value.get<double>());
      default: writeOther(value); return true;
    }
  }

 private:
  /// Room for so many bytes behind what has been written.
  char* room(std::size_t count) {
    if (text.size() - used < count) text.resize(std::max(2 * text.size(), used + count));
    return text.data() + used;
  }

  void put(char character) {
    *room(1) = character;
    ++used;
  }

  void put(std::string_view words) {
    std::ranges::copy(words, room(words.size()));
    used += words.size();
  }

  bool writeObject(const Json::object_t& object) {
    char before = '{';
    for (const auto& [key, value] : object) {
      put(before);
      writeText(key);
      put(':');
      if (!write(value)) return false;
      before = ',';
    }
    put(object.empty() ? "{}" : "}");
    return true;
  }

  bool writeList(const Json::array_t& list) {
    char before = '[';
    for (const Json& value : list) {
      put(before);
      if (!write(value)) return false;
      before = ',';
    }
    put(list.empty() ? "[]" : "]");
    return true;
  }

  /// Copies and looks in one pass; a text with anything special in it is the library's to write.
  void writeText(const std::string& words) {
    char* place = room(words.size() + 2);
    bool isSpecial = false;
    *place++ = '"';
    for (const char character : words) {
      isSpecial |= specialBytes[static_cast<unsigned char>(character)];
      *place++ = character;
    }
    *place = '"';
    if (isSpecial) return writeOther(words);
    used += words.size() + 2;
  }

  template <typename Integer>
  void writeInteger(Integer number) {
    char* const place = room(longestNumber);
    used +=
        static_cast<std::size_t>(std::to_chars(place, place + longestNumber, number).ptr - place);
  }

  /// As the library does: the shortest digits that read back as the same, never without a point.
  bool writeNumber(double number) {
    if (!std::isfinite(number)) return false;
    char* const place = room(longestNumber);
    used += static_cast<std::size_t>(
        nlohmann::detail::to_chars(place, place + longestNumber, number) - place);
    return true;
  }

  void writeOther(const Json& value) {
    put(value.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace));
  }

  std::string text = std::string(usualBytes, '\0');
  std::size_t used = 0;
};

}  // namespace

std::optional<std::string> jsonText(const nlohmann::ordered_json& value) {
  JsonWriter writer;
  if (!writer.write(value)) return std::nullopt;
  return writer.takeText();
}

nlohmann::json parsedJson(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) {
    return nlohmann::json(nlohmann::json::value_t::discarded);
  }
  return nlohmann::json::parse(text, nullptr, false);
}

}  // namespace korvantis
