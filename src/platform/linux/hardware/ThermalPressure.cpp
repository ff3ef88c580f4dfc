#include "platform/linux/hardware/ThermalPressure.h"

#include <algorithm>
#include <set>
#include <unistd.h>

#include "platform/linux/FolderNames.h"
#include "platform/linux/hardware/NumberedFolders.h"

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;
constexpr double readingAge = 0.25;
/// The longest interval between two ticks: each of them then sees a throttling.
constexpr double throttleMemory = 5.0;
constexpr std::int64_t nearCritical = 5000;
/// Beyond any real count: a damaged one must not overflow the sum.
constexpr std::int64_t mostThrottles = 1'000'000'000'000;

/// The lowest limit of a kind; firmware marks unused ones by figures at or below 0.
std::optional<std::int64_t> limitOf(const std::string& zone, const std::string& kind) {
  std::optional<std::int64_t> lowest;
  for (int trip = 0;; ++trip) {
    const std::string point = zone + "/trip_point_" + std::to_string(trip);
    const std::string type = attributeText(point + "_type");
    if (type.empty()) return lowest;
    const auto celsius = type == kind ? attributeNumber(point + "_temp") : std::nullopt;
    if (celsius && *celsius > 0) lowest = std::min(lowest.value_or(*celsius), *celsius);
  }
}

bool coolsProcessor(const std::string& folder) {
  const std::string type = attributeText(folder + "/type");
  return type == "Processor" || type == "intel_powerclamp" ||
         type.find("cpufreq") != std::string::npos || type.find("cpuidle") != std::string::npos;
}

std::vector<AttributeFile> throttleCountsBelow(const std::string& root) {
  std::vector<AttributeFile> counts;
  std::set<std::string> packages;
  for (const std::string& folder : numberedFolders(root + "/sys/devices/system/cpu", "cpu")) {
    const std::string throttle = folder + "/thermal_throttle/";
    if (::access((throttle + "core_throttle_count").c_str(), F_OK) != 0) continue;
    counts.emplace_back(throttle + "core_throttle_count");
    // All processors of a package show the package's one count.
    if (packages.insert(attributeText(folder + "/topology/physical_package_id")).second) {
      counts.emplace_back(throttle + "package_throttle_count");
    }
  }
  return counts;
}

}  // namespace

ThermalPressure::ThermalPressure(const HardwareSources& sources)
    : root(sources.root), monotonicSeconds(sources.monotonicSeconds) {}

void ThermalPressure::look() {
  const std::string folder = root + "/sys/class/thermal";
  std::vector<std::string> names = namesInFolder(folder);
  std::sort(names.begin(), names.end());
  names.push_back(attributeText(root + "/sys/devices/system/cpu/online"));
  // Limits stay as they are while their zones do.
  if (names == lastNames) return;
  lastNames = std::move(names);
  zones.clear();
  coolers.clear();
  for (const std::string& zone : numberedFolders(folder, "thermal_zone")) {
    zones.push_back(
        {zone, AttributeFile(zone + "/temp"), limitOf(zone, "hot"), limitOf(zone, "critical")});
  }
  for (const std::string& device : numberedFolders(folder, "cooling_device")) {
    if (coolsProcessor(device)) coolers.emplace_back(device + "/cur_state");
  }
  throttleCounts = throttleCountsBelow(root);
  lastThrottles.reset();
}

bool ThermalPressure::wasThrottled(double now) {
  std::optional<std::int64_t> throttles = 0;
  for (AttributeFile& count : throttleCounts) {
    const auto number = count.number();
    // A processor that was switched off takes its count along; what it brings back later would
    // look like new throttling.
    if (!number) throttles.reset();
    if (throttles) *throttles += std::clamp<std::int64_t>(number.value_or(0), 0, mostThrottles);
  }
  if (lastThrottles && throttles && *throttles > *lastThrottles) throttledAt = now;
  lastThrottles = throttles;
  return throttledAt && now - *throttledAt < throttleMemory;
}

std::int64_t ThermalPressure::zoneState() {
  std::int64_t state = 0;
  for (Zone& zone : zones) {
    if (!zone.hot && !zone.critical) continue;
    const auto celsius = zone.celsius.number();
    if (!celsius) continue;
    if (zone.critical && *celsius >= *zone.critical - nearCritical) return 3;
    if (zone.hot && *celsius >= *zone.hot) state = 2;
  }
  return state;
}

std::int64_t ThermalPressure::state() {
  const std::scoped_lock guard(lock);
  const double now = monotonicSeconds();
  if (readAt && now - *readAt < readingAge) return lastState;
  readAt = now;
  if (!lookedAt || now - *lookedAt >= lookPace) {
    lookedAt = now;
    look();
  }
  lastState = zoneState();
  if (wasThrottled(now)) lastState = std::max<std::int64_t>(lastState, 2);
  const bool cooled = std::any_of(coolers.begin(), coolers.end(), [](AttributeFile& cooler) {
    return cooler.number().value_or(0) > 0;
  });
  if (cooled) lastState = std::max<std::int64_t>(lastState, 1);
  return lastState;
}

}  // namespace korvantis
