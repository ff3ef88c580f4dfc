#include "platform/macos/FoundationValues.h"

#include <string>
#include <utility>

namespace korvantis {
namespace {

std::string textOf(CFStringRef text) {
  const CFIndex length = CFStringGetLength(text);
  const CFIndex most = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
  std::string bytes(static_cast<std::size_t>(most), '\0');
  CFIndex used = 0;
  CFStringGetBytes(text, CFRangeMake(0, length), kCFStringEncodingUTF8, '?', false,
                   reinterpret_cast<UInt8*>(bytes.data()), most, &used);
  bytes.resize(static_cast<std::size_t>(used));
  return bytes;
}

PropertyValue numberOf(CFNumberRef number) {
  if (CFNumberIsFloatType(number)) {
    double real = 0;
    CFNumberGetValue(number, kCFNumberDoubleType, &real);
    return PropertyValue{real};
  }
  std::int64_t whole = 0;
  CFNumberGetValue(number, kCFNumberSInt64Type, &whole);
  return PropertyValue{whole};
}

PropertyValue listOf(CFArrayRef array) {
  PropertyValue::List list;
  for (CFIndex index = 0; index < CFArrayGetCount(array); ++index) {
    if (auto value = propertyValueOf(CFArrayGetValueAtIndex(array, index))) {
      list.push_back(std::move(*value));
    }
  }
  return PropertyValue{std::move(list)};
}

void addEntry(const void* key, const void* value, void* map) {
  if (CFGetTypeID(key) != CFStringGetTypeID()) return;
  if (auto converted = propertyValueOf(value)) {
    static_cast<PropertyMap*>(map)->insert_or_assign(textOf(static_cast<CFStringRef>(key)),
                                                     std::move(*converted));
  }
}

}  // namespace

std::optional<std::int64_t> wholeNumberOf(CFTypeRef value) {
  if (value == nullptr || CFGetTypeID(value) != CFNumberGetTypeID()) return std::nullopt;
  std::int64_t number = 0;
  CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt64Type, &number);
  return number;
}

std::optional<PropertyValue> propertyValueOf(CFTypeRef value) {
  if (value == nullptr) return std::nullopt;
  const CFTypeID type = CFGetTypeID(value);
  if (type == CFStringGetTypeID()) return PropertyValue{textOf(static_cast<CFStringRef>(value))};
  if (type == CFBooleanGetTypeID()) {
    return PropertyValue{CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0};
  }
  if (type == CFNumberGetTypeID()) return numberOf(static_cast<CFNumberRef>(value));
  if (type == CFDateGetTypeID()) {
    return PropertyValue{CFDateGetAbsoluteTime(static_cast<CFDateRef>(value)) +
                         kCFAbsoluteTimeIntervalSince1970};
  }
  if (type == CFDataGetTypeID()) {
    const auto data = static_cast<CFDataRef>(value);
    const UInt8* const bytes = CFDataGetBytePtr(data);
    return PropertyValue{PropertyValue::Bytes(bytes, bytes + CFDataGetLength(data))};
  }
  if (type == CFArrayGetTypeID()) return listOf(static_cast<CFArrayRef>(value));
  if (type == CFDictionaryGetTypeID()) {
    return PropertyValue{propertyMapOf(static_cast<CFDictionaryRef>(value))};
  }
  return std::nullopt;
}

PropertyMap propertyMapOf(CFDictionaryRef dictionary) {
  PropertyMap map;
  CFDictionaryApplyFunction(dictionary, addEntry, &map);
  return map;
}

}  // namespace korvantis
