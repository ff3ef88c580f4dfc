#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "core/FanReading.h"
#include "core/SensorItem.h"
#include "core/ThermalSample.h"
#include "platform/SMCCalls.h"

namespace korvantis {

/// Reads temperatures, power and fan speeds from the System Management Controller, and remembers
/// the fan speeds that the user asks for. It only ever reads: nothing is written to the
/// controller, so a target shows in the sample and changes no fan. Where the controller gives
/// nothing, figures estimated from the loads stand in, so a sample is always full. Any thread.
class AppleSMCReader {
 public:
  /// Opens the controller. `stateOfSystem` tells how hot the system says it is, 0 to 3.
  AppleSMCReader(SMCCalls controller, std::function<std::int64_t()> stateOfSystem);
  ~AppleSMCReader();
  AppleSMCReader(const AppleSMCReader&) = delete;
  AppleSMCReader& operator=(const AppleSMCReader&) = delete;

  /// The one reader of this program, made on first use and never destroyed.
  static AppleSMCReader& shared();

  /// The number under a key of four letters; absent without a controller, or when it does not
  /// answer or the type is unknown.
  std::optional<double> readDouble(std::string_view key);

  /// Temperatures, power and fans now. The loads in percent stand behind what can't be read.
  ThermalSample sampleThermal(double cpuLoadPercent, double gpuLoadPercent);

  /// Remembers the wish for fan `fanID` in turns a minute, held to 1200 to 6200, or forgets it
  /// when `rpm` is absent. Lasts until the program ends. Always true.
  bool setFanTarget(std::int64_t fanID, std::optional<double> rpm);

 private:
  std::optional<SMCKeyData> exchange(const SMCKeyData& request);
  std::vector<SensorItem> readSensors();
  std::optional<double> fanTarget(std::int64_t fanID);
  FanReading withTarget(FanReading fan);
  std::vector<FanReading> readFans(double cpuCelsius);
  FanReading readFan(std::int64_t index, std::int64_t count);

  const SMCCalls calls;
  const std::function<std::int64_t()> thermalState;
  /// The open user client, 0 when there is none.
  const std::uint32_t connection;
  /// Guards the targets, and keeps the two exchanges of one key together.
  std::mutex lock;
  std::map<std::int64_t, double> manualFanTargets;
};

}  // namespace korvantis
