#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/HardwareSources.h"

namespace korvantis {

/// How hot the machine is by the kernel's own measure: the limits of its thermal zones, the
/// throttling of its processors and the cooling that is under way. Any thread.
class ThermalPressure {
 public:
  explicit ThermalPressure(const HardwareSources& sources);

  /// 3: a zone is within 5 degrees of its critical limit. 2: a zone is at its hot limit, or a
  /// processor was throttled within the last 5 seconds. 1: a processor is being held back to cool.
  /// 0: none of these, or nothing known.
  std::int64_t state();

 private:
  struct Zone {
    std::string folder;
    AttributeFile celsius;
    std::optional<std::int64_t> hot;
    std::optional<std::int64_t> critical;
  };

  void look();
  bool wasThrottled(double now);
  std::int64_t zoneState();

  const std::string root;
  const std::function<double()> monotonicSeconds;

  /// Held while reading: a second thread then takes what the first has just found.
  std::mutex lock;
  std::optional<double> lookedAt;
  std::optional<double> readAt;
  std::int64_t lastState = 0;
  std::vector<std::string> lastNames;
  std::vector<Zone> zones;
  std::vector<AttributeFile> coolers;
  std::vector<AttributeFile> throttleCounts;
  std::optional<std::int64_t> lastThrottles;
  std::optional<double> throttledAt;
};

}  // namespace korvantis
