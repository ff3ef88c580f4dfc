#include "analysis/StrainRules.h"

#include <cstdint>
#include <optional>

namespace korvantis::StrainRules {

namespace {

constexpr double busyPercent = 75;
constexpr double busyNeuralEnginePercent = 40;
constexpr double tightMemoryPercent = 70;
constexpr double busyDiskBytesPerSec = 125'829'120;
constexpr double drainingWatts = 22;
constexpr std::int64_t seriousThermalState = 2;

bool isShortOfMemory(const SystemSample& system) {
  return system.memoryPressure != MemoryPressureLevel::normal ||
         system.memoryPressurePercent >= tightMemoryPercent;
}

bool isDraining(const std::optional<BatterySample>& battery) {
  return battery && !battery->isPluggedIn && battery->watts >= drainingWatts;
}

}  // namespace

bool isHot(const ThermalSample& thermal, double hotCelsius) {
  return thermal.hottestCelsius >= hotCelsius || thermal.thermalStateLevel >= seriousThermalState;
}

std::vector<StrainKind> activeStrains(const SystemSample& system, double hotCelsius) {
  std::vector<StrainKind> strains;
  const auto addIf = [&strains](StrainKind kind, bool isActive) {
    if (isActive) strains.push_back(kind);
  };
  addIf(StrainKind::cpu, system.cpuPercent >= busyPercent);
  addIf(StrainKind::memory, isShortOfMemory(system));
  addIf(StrainKind::gpu, system.gpuPercent >= busyPercent);
  addIf(StrainKind::neuralEngine, system.neuralEnginePercent >= busyNeuralEnginePercent);
  addIf(StrainKind::temperature, isHot(system.thermal, hotCelsius));
  addIf(StrainKind::disk,
        system.diskReadBytesPerSec + system.diskWriteBytesPerSec >= busyDiskBytesPerSec);
  addIf(StrainKind::battery, isDraining(system.battery));
  return strains;
}

}  // namespace korvantis::StrainRules
