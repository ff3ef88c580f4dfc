#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// What the kernel tells of one power supply. Amounts are in millionths of ampere hours, watt
/// hours, volts, amperes and watts; a figure that the supply does not have is absent.
struct PowerSupply {
  /// "Battery", "Mains", "USB", "UPS".
  std::string type;
  /// "Charging", "Discharging", "Full", "Not charging", "Unknown".
  std::string status;
  /// Of a mouse or another peripheral, not of this machine.
  bool ofPeripheral = false;
  /// A bay without its battery says false.
  bool present = true;
  bool online = false;
  std::optional<std::int64_t> capacityPercent;
  std::optional<std::int64_t> chargeNow;
  std::optional<std::int64_t> chargeFull;
  std::optional<std::int64_t> chargeFullDesign;
  std::optional<std::int64_t> energyNow;
  std::optional<std::int64_t> energyFull;
  std::optional<std::int64_t> energyFullDesign;
  std::optional<std::int64_t> voltageNow;
  std::optional<std::int64_t> currentNow;
  std::optional<std::int64_t> powerNow;
  std::optional<std::int64_t> cycleCount;
  /// Tenths of a degree Celsius.
  std::optional<std::int64_t> temperature;

  bool operator==(const PowerSupply&) const = default;
};

/// Reads the lines "POWER_SUPPLY_NAME=value" of a supply's `uevent`. What is no number where one
/// belongs counts as missing.
PowerSupply parsePowerSupply(std::string_view uevent);

}  // namespace korvantis
