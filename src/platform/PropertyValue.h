#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace korvantis {

struct PropertyValue;

/// A map from text to values of any kind, as in a property list.
using PropertyMap = std::map<std::string, PropertyValue>;

/// One value of a property list: text, flag, whole number, real number, bytes, list or map.
/// A date is its seconds since 1970 as a real number.
struct PropertyValue {
  using List = std::vector<PropertyValue>;
  using Bytes = std::vector<std::uint8_t>;

  std::variant<std::string, bool, std::int64_t, double, Bytes, List, PropertyMap> value;

  bool operator==(const PropertyValue&) const = default;
};

/// The text under `key`; absent when there is none or it is no text.
std::optional<std::string> textProperty(const PropertyMap& map, const std::string& key);

}  // namespace korvantis
