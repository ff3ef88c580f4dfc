#include "core/JsonText.h"

#include <array>
#include <charconv>
#include <cmath>

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
  std::string text;

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
  bool writeObject(const Json::object_t& object) {
    char before = '{';
    for (const auto& [key, value] : object) {
      text += before;
      writeText(key);
      text += ':';
      if (!write(value)) return false;
      before = ',';
    }
    text += object.empty() ? "{}" : "}";
    return true;
  }

  bool writeList(const Json::array_t& list) {
    char before = '[';
    for (const Json& value : list) {
      text += before;
      if (!write(value)) return false;
      before = ',';
    }
    text += list.empty() ? "[]" : "]";
    return true;
  }

  /// Copies and looks in one pass; a text with anything special in it is the library's to write.
  void writeText(const std::string& words) {
    const std::size_t begin = text.size();
    text.resize(begin + words.size() + 2);
    char* place = text.data() + begin;
    bool isSpecial = false;
    *place++ = '"';
    for (const char character : words) {
      isSpecial |= specialBytes[static_cast<unsigned char>(character)];
      *place++ = character;
    }
    *place = '"';
    if (!isSpecial) return;
    text.resize(begin);
    writeOther(words);
  }

  template <typename Integer>
  void writeInteger(Integer number) {
    std::array<char, longestNumber> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
  }

  /// As the library does: the shortest digits that read back as the same, never without a point.
  bool writeNumber(double number) {
    if (!std::isfinite(number)) return false;
    std::array<char, longestNumber> digits{};
    const char* const begin = digits.data();
    const char* const end =
        nlohmann::detail::to_chars(digits.data(), begin + digits.size(), number);
    text.append(begin, end);
    return true;
  }

  void writeOther(const Json& value) {
    text += value.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace);
  }
};

}  // namespace

std::optional<std::string> jsonText(const nlohmann::ordered_json& value) {
  JsonWriter writer;
  writer.text.reserve(usualBytes);
  if (!writer.write(value)) return std::nullopt;
  return std::move(writer.text);
}

}  // namespace korvantis
