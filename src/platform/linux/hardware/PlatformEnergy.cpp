#include "platform/linux/hardware/PlatformEnergy.h"

#include "platform/linux/hardware/NumberedFolders.h"

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;
constexpr double leastInterval = 0.2;

}  // namespace

PlatformEnergy::PlatformEnergy(const HardwareSources& sources)
    : folder(sources.root + "/sys/class/powercap"), monotonicSeconds(sources.monotonicSeconds) {}

void PlatformEnergy::look() {
  for (const std::string& domain : numberedFolders(folder, "intel-rapl:")) {
    if (attributeText(domain + "/name") != "psys") continue;
    counter.emplace(domain + "/energy_uj");
    range = static_cast<double>(attributeNumber(domain + "/max_energy_range_uj").value_or(0));
    return;
  }
}

std::optional<double> PlatformEnergy::watts() {
  const double now = monotonicSeconds();
  if (!counter && (!lookedAt || now - *lookedAt >= lookPace)) {
    lookedAt = now;
    look();
  }
  if (!counter || (countedAt && now - *countedAt < leastInterval)) return lastWatts;
  const auto microjoules = counter->number();
  if (!microjoules) {
    // Refused or gone: look again at the slow pace.
    counter.reset();
    countedAt.reset();
    lastWatts.reset();
    return std::nullopt;
  }
  const auto count = static_cast<double>(*microjoules);
  if (countedAt) {
    const double rise = count >= lastCount ? count - lastCount : count - lastCount + range;
    lastWatts = rise >= 0 ? std::optional(rise / 1e6 / (now - *countedAt)) : std::nullopt;
  }
  countedAt = now;
  lastCount = count;
  return lastWatts;
}

}  // namespace korvantis
