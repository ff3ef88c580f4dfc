#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Power sources and what keeps the machine awake. Any thread.
struct PowerCalls {
  /// The description of each power source in list order, absent for a source without one
  /// (`IOPSCopyPowerSourcesInfo`, `IOPSCopyPowerSourcesList`, `IOPSGetPowerSourceDescription`);
  /// absent as a whole when the snapshot or its list can't be had.
  std::function<std::optional<std::vector<std::optional<PropertyMap>>>()> powerSources;

  /// The power assertions of each process (`IOPMCopyAssertionsByProcess`); absent on failure.
  std::function<std::optional<std::map<std::int32_t, std::vector<PropertyMap>>>()>
      IOPMCopyAssertionsByProcess;
};

}  // namespace korvantis
