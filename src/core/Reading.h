#pragma once

#include <cstdint>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One row of the stored machine history.
struct Reading {
  /// Epoch seconds of the first moment covered.
  std::int64_t start = 0;
  /// How many seconds it covers.
  double seconds = 300.0;
  double cpuPercentAvg = 0;
  double cpuPercentPeak = 0;
  double memoryUsedBytesAvg = 0;
  double memoryUsedBytesPeak = 0;
  double memoryPressurePercentAvg = 0;
  double memoryPressurePercentPeak = 0;
  std::int64_t memoryPressureLevelPeak = 0;
  std::uint64_t swapUsedBytesPeak = 0;
  double gpuPercentAvg = 0;
  double gpuPercentPeak = 0;
  double neuralEnginePercentAvg = 0;
  double neuralEnginePercentPeak = 0;
  double cpuCelsiusAvg = 0;
  double cpuCelsiusPeak = 0;
  double hottestCelsiusAvg = 0;
  double hottestCelsiusPeak = 0;
  double fanRpmAvg = 0;
  double fanRpmPeak = 0;
  double powerWattsAvg = 0;
  double powerWattsPeak = 0;
  std::int64_t thermalStatePeak = 0;
  double batteryPercentAvg = 0;
  double pluggedInSeconds = 0;

  bool operator==(const Reading&) const = default;

  /// What tells one of these from another in a list.
  std::int64_t identity() const { return start; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"start", &Reading::start},
                      Field{"seconds", &Reading::seconds},
                      Field{"cpuPercentAvg", &Reading::cpuPercentAvg},
                      Field{"cpuPercentPeak", &Reading::cpuPercentPeak},
                      Field{"memoryUsedBytesAvg", &Reading::memoryUsedBytesAvg},
                      Field{"memoryUsedBytesPeak", &Reading::memoryUsedBytesPeak},
                      Field{"memoryPressurePercentAvg", &Reading::memoryPressurePercentAvg},
                      Field{"memoryPressurePercentPeak", &Reading::memoryPressurePercentPeak},
                      Field{"memoryPressureLevelPeak", &Reading::memoryPressureLevelPeak},
                      Field{"swapUsedBytesPeak", &Reading::swapUsedBytesPeak},
                      Field{"gpuPercentAvg", &Reading::gpuPercentAvg},
                      Field{"gpuPercentPeak", &Reading::gpuPercentPeak},
                      Field{"neuralEnginePercentAvg", &Reading::neuralEnginePercentAvg},
                      Field{"neuralEnginePercentPeak", &Reading::neuralEnginePercentPeak},
                      Field{"cpuCelsiusAvg", &Reading::cpuCelsiusAvg},
                      Field{"cpuCelsiusPeak", &Reading::cpuCelsiusPeak},
                      Field{"hottestCelsiusAvg", &Reading::hottestCelsiusAvg},
                      Field{"hottestCelsiusPeak", &Reading::hottestCelsiusPeak},
                      Field{"fanRpmAvg", &Reading::fanRpmAvg},
                      Field{"fanRpmPeak", &Reading::fanRpmPeak},
                      Field{"powerWattsAvg", &Reading::powerWattsAvg},
                      Field{"powerWattsPeak", &Reading::powerWattsPeak},
                      Field{"thermalStatePeak", &Reading::thermalStatePeak},
                      Field{"batteryPercentAvg", &Reading::batteryPercentAvg},
                      Field{"pluggedInSeconds", &Reading::pluggedInSeconds}};
  }
};

}  // namespace korvantis
