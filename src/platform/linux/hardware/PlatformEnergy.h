#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/HardwareSources.h"

namespace korvantis {

/// The power of the whole machine by the processor's energy counter for the platform, which few
/// machines have and only the superuser may read. One thread at a time.
class PlatformEnergy {
 public:
  explicit PlatformEnergy(const HardwareSources& sources);

  /// Watts between the last two readings at least 0.2 seconds apart; absent before there are two,
  /// and where there is no such counter or it is refused.
  std::optional<double> watts();

 private:
  void look();

  const std::string folder;
  const std::function<double()> monotonicSeconds;
  std::optional<double> lookedAt;
  std::optional<AttributeFile> counter;
  double range = 0;
  std::optional<double> countedAt;
  double lastCount = 0;
  std::optional<double> lastWatts;
};

}  // namespace korvantis
