#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/PropertyValue.h"

namespace korvantis {

/// A whole number under `key`; absent when there is none or it is anything else.
std::optional<std::int64_t> wholeNumberProperty(const PropertyMap& map, const std::string& key);

/// Any number under `key`, a real one cut toward zero; absent when there is none, or it is no
/// number or beyond 64 bits.
std::optional<std::int64_t> numberProperty(const PropertyMap& map, const std::string& key);

/// The map under `key`; null when there is none.
const PropertyMap* mapProperty(const PropertyMap& map, const std::string& key);

}  // namespace korvantis
