#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/FanReading.h"
#include "core/Field.h"
#include "core/SensorItem.h"

namespace korvantis {

/// Temperatures, power and fans of one tick.
struct ThermalSample {
  double cpuCelsius = 44.0;
  double gpuCelsius = 41.0;
  double hottestCelsius = 46.5;
  std::string hottestSensorName = "CPU Performance Core";
  /// Power of the whole machine, watts.
  double systemPowerWatts = 8.4;
  /// 0 is nominal.
  std::int64_t thermalStateLevel = 0;
  /// Every sensor read.
  std::vector<SensorItem> sensors;
  /// Every fan.
  std::vector<FanReading> fans;

  bool operator==(const ThermalSample&) const = default;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"cpuCelsius", &ThermalSample::cpuCelsius},
                      Field{"gpuCelsius", &ThermalSample::gpuCelsius},
                      Field{"hottestCelsius", &ThermalSample::hottestCelsius},
                      Field{"hottestSensorName", &ThermalSample::hottestSensorName},
                      Field{"systemPowerWatts", &ThermalSample::systemPowerWatts},
                      Field{"thermalStateLevel", &ThermalSample::thermalStateLevel},
                      Field{"sensors", &ThermalSample::sensors},
                      Field{"fans", &ThermalSample::fans}};
  }
};

}  // namespace korvantis
