#include "platform/linux/hardware/PowerSupplyText.h"

#include <array>
#include <utility>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

using Figure = std::optional<std::int64_t> PowerSupply::*;

constexpr std::array<std::pair<std::string_view, Figure>, 12> figures{{
    {"CAPACITY", &PowerSupply::capacityPercent},
    {"CHARGE_NOW", &PowerSupply::chargeNow},
    {"CHARGE_FULL", &PowerSupply::chargeFull},
    {"CHARGE_FULL_DESIGN", &PowerSupply::chargeFullDesign},
    {"ENERGY_NOW", &PowerSupply::energyNow},
    {"ENERGY_FULL", &PowerSupply::energyFull},
    {"ENERGY_FULL_DESIGN", &PowerSupply::energyFullDesign},
    {"VOLTAGE_NOW", &PowerSupply::voltageNow},
    {"CURRENT_NOW", &PowerSupply::currentNow},
    {"POWER_NOW", &PowerSupply::powerNow},
    {"CYCLE_COUNT", &PowerSupply::cycleCount},
    {"TEMP", &PowerSupply::temperature},
}};

void readField(PowerSupply& supply, std::string_view name, std::string_view value) {
  if (name == "TYPE") supply.type = value;
  if (name == "STATUS") supply.status = value;
  if (name == "SCOPE") supply.ofPeripheral = value == "Device";
  if (name == "PRESENT") supply.present = value != "0";
  // 2 stands for a port whose voltage can be chosen.
  if (name == "ONLINE") supply.online = value == "1" || value == "2";
  for (const auto& [figure, member] : figures) {
    if (name == figure) supply.*member = signedNumber(value);
  }
}

}  // namespace

PowerSupply parsePowerSupply(std::string_view uevent) {
  constexpr std::string_view prefix = "POWER_SUPPLY_";
  PowerSupply supply;
  while (!uevent.empty()) {
    const std::string_view line = takeLine(uevent);
    const std::size_t equals = line.find('=');
    if (!line.starts_with(prefix) || equals == std::string_view::npos) continue;
    readField(supply, line.substr(prefix.size(), equals - prefix.size()), line.substr(equals + 1));
  }
  return supply;
}

}  // namespace korvantis
