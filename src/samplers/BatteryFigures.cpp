#include "samplers/BatteryFigures.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "core/Rounding.h"
#include "samplers/RegistryNumbers.h"

namespace korvantis {
namespace {

constexpr double unknownHealthPercent = 98.0;
constexpr std::int64_t unknownCycleCount = 48;
constexpr double unknownCelsius = 31.2;
constexpr double leastHealthPercent = 50.0;
/// Raw temperatures above this are tenths of a kelvin, others hundredths of a degree.
constexpr double greatestHundredthsOfDegree = 2500.0;
constexpr double kelvinOfZeroCelsius = 273.15;
constexpr double microwattsPerWatt = 1'000'000.0;

/// One power source into what the sources before it gave.
void addPowerSource(BatterySample& sample, const PropertyMap& source) {
  const auto current = realNumberProperty(source, "Current Capacity");
  const auto maximum = realNumberProperty(source, "Max Capacity");
  if (current && maximum && *maximum > 0) sample.percentage = *current / *maximum * 100;
  if (const auto charging = flagProperty(source, "Is Charging")) sample.isCharging = *charging;
  if (const auto state = textProperty(source, "Power Source State")) {
    sample.isPluggedIn = *state == "AC Power";
  }
  const auto toEmpty = wholeNumberProperty(source, "Time to Empty");
  const auto toFull = wholeNumberProperty(source, "Time to Full Charge");
  if (toEmpty && *toEmpty >= 1) {
    sample.timeRemainingMinutes = toEmpty;
  } else if (toFull && *toFull > 0) {
    sample.timeRemainingMinutes = toFull;
  }
}

double celsiusOf(const PropertyMap& battery) {
  const auto raw = realNumberProperty(battery, "Temperature");
  if (!raw || !(*raw > 0)) return unknownCelsius;
  return *raw > greatestHundredthsOfDegree ? *raw / 10 - kelvinOfZeroCelsius : *raw / 100;
}

double healthOf(const PropertyMap& battery) {
  auto capacity = realNumberProperty(battery, "AppleRawMaxCapacity");
  if (!capacity) capacity = realNumberProperty(battery, "NominalChargeCapacity");
  const auto design = realNumberProperty(battery, "DesignCapacity");
  if (!capacity || !design || !(*design > 0)) return unknownHealthPercent;
  return std::clamp(*capacity / *design * 100, leastHealthPercent, 100.0);
}

double wattsOf(const PropertyMap& battery) {
  const auto millivolts = realNumberProperty(battery, "Voltage");
  auto milliamperes = realNumberProperty(battery, "InstantAmperage");
  if (!milliamperes) milliamperes = realNumberProperty(battery, "Amperage");
  if (!millivolts || !milliamperes) return 0;
  return std::abs(*millivolts * *milliamperes) / microwattsPerWatt;
}

void addBatteryDevice(BatterySample& sample, const IORegistryCalls& registry) {
  sample.watts = 0;
  sample.healthPercent = unknownHealthPercent;
  sample.cycleCount = unknownCycleCount;
  sample.temperatureCelsius = unknownCelsius;
  const auto services = registry.matchingServices("AppleSmartBattery");
  if (!services || services->empty()) return;
  const auto battery = services->front().createCFProperties();
  if (!battery) return;
  sample.cycleCount = wholeNumberProperty(*battery, "CycleCount").value_or(unknownCycleCount);
  sample.temperatureCelsius = celsiusOf(*battery);
  sample.healthPercent = healthOf(*battery);
  sample.watts = wattsOf(*battery);
}

}  // namespace

BatterySample readBattery(const PowerCalls& power, const IORegistryCalls& registry) {
  BatterySample sample;
  if (const auto sources = power.powerSources()) {
    for (const auto& source : *sources) {
      if (source) addPowerSource(sample, *source);
    }
  }
  addBatteryDevice(sample, registry);
  sample.percentage = roundedToOneDecimal(sample.percentage);
  sample.watts = roundedToOneDecimal(sample.watts);
  sample.healthPercent = roundedToOneDecimal(sample.healthPercent);
  sample.temperatureCelsius = roundedToOneDecimal(sample.temperatureCelsius);
  return sample;
}

}  // namespace korvantis
