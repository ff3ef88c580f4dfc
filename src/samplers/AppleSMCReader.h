#pragma once

#include <cstdint>
#include <optional>

#include "core/ThermalSample.h"

namespace korvantis {

/// Temperatures, power and fans of the machine, and the fan speeds that the user asks for. For
/// now it takes no target. Any thread.
class AppleSMCReader {
 public:
  /// The one reader of this program, made on first use and never destroyed.
  static AppleSMCReader& shared();

  /// Temperatures, power and fans now; the loads in percent stand behind what can't be measured.
  /// For now what stands in before the first reading.
  ThermalSample sampleThermal(double cpuLoadPercent, double gpuLoadPercent);

  /// Sets the speed of fan `fanID` in turns a minute, or gives it back to the system when `rpm`
  /// is absent. Says whether that was taken; for now never.
  bool setFanTarget(std::int64_t fanID, std::optional<double> rpm);
};

}  // namespace korvantis
