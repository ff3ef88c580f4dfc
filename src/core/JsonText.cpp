#include "core/JsonText.h"

#include <cstdint>
#include <string>

#include "core/JsonWriter.h"

namespace korvantis {

namespace {

using Json = nlohmann::ordered_json;

void write(JsonWriter& writer, const Json& value);

void writeObject(JsonWriter& writer, const Json::object_t& object) {
  writer.beginObject();
  for (const auto& [key, value] : object) {
    writer.key(key);
    write(writer, value);
  }
  writer.endObject();
}

void writeList(JsonWriter& writer, const Json::array_t& list) {
  writer.beginList();
  for (const Json& value : list) write(writer, value);
  writer.endList();
}

void write(JsonWriter& writer, const Json& value) {
  switch (value.type()) {
    case Json::value_t::object: writeObject(writer, value.get_ref<const Json::object_t&>()); return;
    case Json::value_t::array: writeList(writer, value.get_ref<const Json::array_t&>()); return;
    case Json::value_t::string: writer.value(value.get_ref<const std::string&>()); return;
    case Json::value_t::boolean: writer.value(value.get<bool>()); return;
    case Json::value_t::number_integer: writer.value(value.get<std::int64_t>()); return;
    case Json::value_t::number_unsigned: writer.value(value.get<std::uint64_t>()); return;
    case Json::value_t::number_float: writer.value(value.get<double>()); return;
    default: writer.null(); return;
  }
}

}  // namespace

std::optional<std::string> jsonText(const nlohmann::ordered_json& value) {
  JsonWriter writer;
  write(writer, value);
  return writer.takeText();
}

nlohmann::json parsedJson(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) {
    return nlohmann::json(nlohmann::json::value_t::discarded);
  }
  return nlohmann::json::parse(text, nullptr, false);
}

}  // namespace korvantis
