#include "analysis/ContainerReply.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "core/JsonText.h"
#include "core/JsonValue.h"
#include "core/Utf8.h"
#include "core/Uuid.h"

namespace korvantis {

namespace {

using Json = nlohmann::json;

constexpr std::string_view headerEnd = "\r\n\r\n";
constexpr std::size_t shownIdCharacters = 12;
// No figures are asked of the engines; every container shows this load.
constexpr double sampleCPUPercent = 0.4;
constexpr std::uint64_t sampleMemoryBytes = std::uint64_t{64} << 20;
constexpr std::int64_t highestPort = 65535;

/// White space and line ends, of any script.
constexpr std::array<std::string_view, 25> blanks{
    " ",      "\t",     "\n",     "\v",     "\f",     "\r",     "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

/// Well-formed UTF-8 without the blanks at its ends.
std::string_view trimmed(std::string_view text) {
  const auto leads = [&text](std::string_view blank) { return text.starts_with(blank); };
  const auto trails = [&text](std::string_view blank) { return text.ends_with(blank); };
  for (auto blank = std::ranges::find_if(blanks, leads); blank != blanks.end();
       blank = std::ranges::find_if(blanks, leads)) {
    text.remove_prefix(blank->size());
  }
  for (auto blank = std::ranges::find_if(blanks, trails); blank != blanks.end();
       blank = std::ranges::find_if(blanks, trails)) {
    text.remove_suffix(blank->size());
  }
  return text;
}

/// The first characters of well-formed UTF-8.
std::string firstCharacters(const std::string& text, std::size_t count) {
  const auto isLead = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    if (isLead(text[end]) && count-- == 0) break;
  }
  return text.substr(0, end);
}

/// The value under `key`; null when there is none.
const Json& valueUnder(const Json& object, const char* key) {
  static const Json& null = *new Json();
  const auto found = object.find(key);
  return found == object.end() ? null : *found;
}

std::optional<std::string> textUnder(const Json& object, const char* key) {
  return fromJson<std::string>(valueUnder(object, key));
}

/// A list whose entries are all objects; anything else has no entries for us.
const Json* listOfObjects(const Json& value) {
  const bool isWhole = value.is_array() && std::ranges::all_of(value, &Json::is_object);
  return isWhole ? &value : nullptr;
}

/// A map whose values are all texts; anything else has no entries for us.
const Json& mapOfTexts(const Json& value) {
  // Lives for ever: at exit the thread of the bridge may still be inside a tick.
  static const Json& none = *new Json(Json::object());
  const bool isWhole = value.is_object() && std::ranges::all_of(value, &Json::is_string);
  return isWhole ? value : none;
}

std::string idOf(const Json& container, const RandomCalls& random) {
  const auto id = textUnder(container, "Id");
  return firstCharacters(id ? *id : Uuid::random(random).text(), shownIdCharacters);
}

std::string nameOf(const Json& container, const std::string& id) {
  const auto names = fromJson<std::vector<std::string>>(valueUnder(container, "Names"));
  std::string name = names && !names->empty() ? names->front() : id;
  if (name.starts_with('/')) name.erase(0, 1);
  return name;
}

/// The published ports; one that is only exposed has no public number.
std::vector<std::uint16_t> portsOf(const Json& container) {
  std::vector<std::uint16_t> ports;
  const Json* const entries = listOfObjects(valueUnder(container, "Ports"));
  if (entries == nullptr) return ports;
  for (const Json& entry : *entries) {
    const auto port = fromJson<std::int64_t>(valueUnder(entry, "PublicPort"));
    if (port && *port >= 1 && *port <= highestPort) {
      ports.push_back(static_cast<std::uint16_t>(*port));
    }
  }
  std::ranges::sort(ports);
  ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
  return ports;
}

ContainerSample sampleOf(const Json& container, const std::string& engine,
                         const RandomCalls& random) {
  const Json& labels = mapOfTexts(valueUnder(container, "Labels"));
  ContainerSample sample;
  sample.id = idOf(container, random);
  sample.name = nameOf(container, sample.id);
  sample.image = textUnder(container, "Image").value_or("container");
  sample.engine = engine;
  sample.status = textUnder(container, "Status").value_or("Up");
  sample.composeProject = textUnder(labels, "com.docker.compose.project");
  sample.composeService = textUnder(labels, "com.docker.compose.service");
  sample.workingDirectory = textUnder(labels, "com.docker.compose.project.working_dir");
  sample.ports = portsOf(container);
  sample.cpuPercent = sampleCPUPercent;
  sample.memoryBytes = sampleMemoryBytes;
  return sample;
}

}  // namespace

std::optional<std::vector<ContainerSample>> containersFromReply(std::string_view reply,
                                                                const std::string& engine,
                                                                const RandomCalls& random) {
  if (!isValidUtf8(reply)) return std::nullopt;
  const std::size_t header = reply.find(headerEnd);
  if (header == std::string_view::npos) return std::nullopt;
  const std::string_view body = trimmed(reply.substr(header + headerEnd.size()));
  const Json parsed = parsedJson(body);
  const Json* const containers = listOfObjects(parsed);
  if (containers == nullptr) return std::nullopt;
  std::vector<ContainerSample> samples;
  samples.reserve(containers->size());
  for (const Json& container : *containers) samples.push_back(sampleOf(container, engine, random));
  return samples;
}

}  // namespace korvantis
