#include "samplers/GPURegistry.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "samplers/ClientCreator.h"
#include "samplers/RegistryNumbers.h"

namespace korvantis {
namespace {

constexpr const char* acceleratorClass = "IOAccelerator";

std::vector<IORegistryEntry> accelerators(const IORegistryCalls& registry) {
  return registry.matchingServices(acceleratorClass).value_or(std::vector<IORegistryEntry>());
}

std::optional<std::int32_t> pidOfClient(const PropertyMap& client) {
  const auto creator = textProperty(client, "IOUserClientCreator");
  return creator ? pidOfCreator(*creator) : std::nullopt;
}

/// The sum over a client's uses. A list with anything but maps in it counts as none.
std::uint64_t accumulatedTime(const PropertyMap& client) {
  std::uint64_t sum = 0;
  const PropertyValue::List* const uses = listProperty(client, "AppUsage");
  if (uses == nullptr) return 0;
  for (const PropertyValue& use : *uses) {
    const auto* const map = std::get_if<PropertyMap>(&use.value);
    if (map == nullptr) return 0;
    sum += static_cast<std::uint64_t>(numberProperty(*map, "accumulatedGPUTime").value_or(0));
  }
  return sum;
}

/// The number under the first of two keys that has one.
std::optional<double> firstNumber(const PropertyMap& map, const char* key, const char* otherKey) {
  const auto number = realNumberProperty(map, key);
  return number ? number : realNumberProperty(map, otherKey);
}

/// Bytes as the device tells them; what can't be a size is 0.
std::uint64_t byteCount(double bytes) {
  constexpr double beyond = 18446744073709551616.0;
  return bytes > 0 && bytes < beyond ? static_cast<std::uint64_t>(bytes) : 0;
}

}  // namespace

GPUTimeByPID readGPUTimeByPID(const IORegistryCalls& registry) {
  GPUTimeByPID times;
  for (const IORegistryEntry& accelerator : accelerators(registry)) {
    for (const IORegistryEntry& child : accelerator.children()) {
      const auto client = child.createCFProperties();
      if (!client) continue;
      const auto pid = pidOfClient(*client);
      if (!pid) continue;
      const std::uint64_t time = accumulatedTime(*client);
      if (time != 0) times[*pid] += time;
    }
  }
  return times;
}

GPUFigures readGPUFigures(const IORegistryCalls& registry) {
  GPUFigures figures;
  for (const IORegistryEntry& accelerator : accelerators(registry)) {
    const auto properties = accelerator.createCFProperties();
    if (!properties) continue;
    const PropertyMap* const statistics = mapProperty(*properties, "PerformanceStatistics");
    if (statistics == nullptr) continue;
    const auto load = firstNumber(*statistics, "Device Utilization %", "Renderer Utilization %");
    figures.percent = std::max(figures.percent, load.value_or(0));
    const auto memory = firstNumber(*statistics, "In use system memory", "Alloc system memory");
    figures.memoryBytes = std::max(figures.memoryBytes, byteCount(memory.value_or(0)));
  }
  return figures;
}

}  // namespace korvantis
