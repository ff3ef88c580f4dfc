#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/PropertyValue.h"

namespace korvantis {

/// One entry of the registry of devices. It holds its object for as long as a copy of it lives.
struct IORegistryEntry {
  /// The entry's properties (`IORegistryEntryCreateCFProperties`); absent when they can't be read.
  std::function<std::optional<PropertyMap>()> createCFProperties;

  /// The entries below it in the plane "IOService" (`IORegistryEntryGetChildIterator`), in order;
  /// empty when there are none or they can't be read.
  std::function<std::vector<IORegistryEntry>()> children;
};

/// The registry of devices, by class. Any thread.
struct IORegistryCalls {
  /// The services of a class and of the classes derived from it, in the registry's order
  /// (`IOServiceMatching`, `IOServiceGetMatchingServices`, `IOIteratorNext`); absent when the
  /// match fails.
  std::function<std::optional<std::vector<IORegistryEntry>>(const std::string& className)>
      matchingServices;
};

}  // namespace korvantis
