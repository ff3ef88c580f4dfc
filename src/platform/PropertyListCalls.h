#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Property lists on disk. Any thread.
struct PropertyListCalls {
  /// Reads a property list in XML or binary form; absent when the file can't be read, is
  /// damaged, or its top level is no map (`NSDictionary` `initWithContentsOfFile:`).
  std::function<std::optional<PropertyMap>(const std::string& path)> dictionaryWithContentsOfFile;
};

}  // namespace korvantis
