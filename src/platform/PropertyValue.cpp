#include "platform/PropertyValue.h"

namespace korvantis {

std::optional<std::string> textProperty(const PropertyMap& map, const std::string& key) {
  const auto found = map.find(key);
  if (found == map.end()) return std::nullopt;
  const auto* text = std::get_if<std::string>(&found->second.value);
  return text ? std::optional(*text) : std::nullopt;
}

}  // namespace korvantis
