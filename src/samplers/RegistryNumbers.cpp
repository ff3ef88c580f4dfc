#include "samplers/RegistryNumbers.h"

namespace korvantis {
namespace {

template <typename Value>
const Value* property(const PropertyMap& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : std::get_if<Value>(&found->second.value);
}

}  // namespace

std::optional<std::int64_t> wholeNumberProperty(const PropertyMap& map, const std::string& key) {
  const auto* whole = property<std::int64_t>(map, key);
  return whole ? std::optional(*whole) : std::nullopt;
}

std::optional<std::int64_t> numberProperty(const PropertyMap& map, const std::string& key) {
  constexpr double beyond = 9223372036854775808.0;
  if (const auto whole = wholeNumberProperty(map, key)) return whole;
  const auto* real = property<double>(map, key);
  // Written so that no number at all fails too.
  if (real == nullptr || !(*real > -beyond && *real < beyond)) return std::nullopt;
  return static_cast<std::int64_t>(*real);
}

std::optional<double> realNumberProperty(const PropertyMap& map, const std::string& key) {
  if (const auto whole = wholeNumberProperty(map, key)) return static_cast<double>(*whole);
  const auto* real = property<double>(map, key);
  return real ? std::optional(*real) : std::nullopt;
}

std::optional<bool> flagProperty(const PropertyMap& map, const std::string& key) {
  const auto* flag = property<bool>(map, key);
  return flag ? std::optional(*flag) : std::nullopt;
}

const PropertyMap* mapProperty(const PropertyMap& map, const std::string& key) {
  return property<PropertyMap>(map, key);
}

const PropertyValue::List* listProperty(const PropertyMap& map, const std::string& key) {
  return property<PropertyValue::List>(map, key);
}

}  // namespace korvantis
