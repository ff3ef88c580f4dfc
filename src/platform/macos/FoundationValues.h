#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <type_traits>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Gives a Core Foundation value back.
struct FoundationValueRelease {
  void operator()(CFTypeRef value) const { CFRelease(value); }
};

/// Owns a Core Foundation value that a function with Create or Copy in its name gave; may be
/// empty.
using OwnedFoundationValue =
    std::unique_ptr<std::remove_pointer_t<CFTypeRef>, FoundationValueRelease>;

/// A number as a whole number, cut toward zero; absent for null and for what is no number.
std::optional<std::int64_t> wholeNumberOf(CFTypeRef value);

/// A value of a property list; absent for a kind that property lists do not have.
std::optional<PropertyValue> propertyValueOf(CFTypeRef value);

/// A dictionary; entries whose key is no text or whose value has no counterpart are left out.
PropertyMap propertyMapOf(CFDictionaryRef dictionary);

}  // namespace korvantis
