#include "samplers/DiskCounters.h"

#include <string>

#include "samplers/RegistryNumbers.h"

namespace korvantis {
namespace {

/// A registry number holds 64 bits without a sign in the clothes of a signed one.
std::uint64_t counter(const PropertyMap& statistics, const std::string& key) {
  return static_cast<std::uint64_t>(numberProperty(statistics, key).value_or(0));
}

}  // namespace

DiskCounters readDiskCounters(const IORegistryCalls& registry) {
  DiskCounters sums;
  const auto drivers = registry.matchingServices("IOBlockStorageDriver");
  if (!drivers) return sums;
  for (const IORegistryEntry& driver : *drivers) {
    const auto properties = driver.createCFProperties();
    const auto* statistics = properties ? mapProperty(*properties, "Statistics") : nullptr;
    if (statistics == nullptr) continue;
    sums.readBytes += counter(*statistics, "Bytes (Read)");
    sums.writeBytes += counter(*statistics, "Bytes (Write)");
  }
  return sums;
}

}  // namespace korvantis
