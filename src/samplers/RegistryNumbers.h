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

/// Any number under `key` as a real one; absent when there is none or it is no number.
std::optional<double> realNumberProperty(const PropertyMap& map, const std::string& key);

/// The flag under `key`; absent when there is none or it is no flag.
std::optional<bool> flagProperty(const PropertyMap& map, const std::string& key);

/// The map under `key`; null when there is none.
const PropertyMap* mapProperty(const PropertyMap& map, const std::string& key);

/// The list under `key`; null when there is none.
const PropertyValue::List* listProperty(const PropertyMap& map, const std::string& key);

}  // namespace korvantis
