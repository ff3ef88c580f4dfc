#include "platform/linux/hardware/BatteryDescription.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

namespace korvantis {
namespace {

using Figure = std::optional<std::int64_t>;
using FigureOf = Figure PowerSupply::*;

/// No battery comes near this; a damaged figure must not overflow a sum.
constexpr std::int64_t mostMillionths = 1'000'000'000'000;

std::vector<PowerSupply> batteriesOf(const std::vector<PowerSupply>& supplies) {
  std::vector<PowerSupply> batteries;
  std::copy_if(supplies.begin(), supplies.end(), std::back_inserter(batteries),
               [](const PowerSupply& supply) { return supply.type == "Battery"; });
  return batteries;
}

bool anyHasStatus(const std::vector<PowerSupply>& batteries, std::string_view status) {
  return std::any_of(batteries.begin(), batteries.end(),
                     [&](const PowerSupply& battery) { return battery.status == status; });
}

bool isMains(const PowerSupply& supply) {
  return supply.type == "Mains" || supply.type.starts_with("USB");
}

bool isOnMains(const std::vector<PowerSupply>& supplies) {
  if (std::any_of(supplies.begin(), supplies.end(), isMains)) {
    return std::any_of(supplies.begin(), supplies.end(),
                       [](const PowerSupply& supply) { return isMains(supply) && supply.online; });
  }
  // A board whose charger is no device of its own.
  return !anyHasStatus(supplies, "Discharging");
}

/// The sum over all batteries; absent unless each of them tells it.
Figure sum(const std::vector<PowerSupply>& batteries, FigureOf figure) {
  std::int64_t total = 0;
  for (const PowerSupply& battery : batteries) {
    const Figure& value = battery.*figure;
    if (!value || *value < 0 || *value > mostMillionths) return std::nullopt;
    total += *value;
  }
  return total;
}

/// Amounts of one kind: charge where all batteries tell it, else energy.
struct Amounts {
  FigureOf now;
  FigureOf full;
  FigureOf design;
};

Amounts amountsOf(const std::vector<PowerSupply>& batteries) {
  constexpr Amounts charge{&PowerSupply::chargeNow, &PowerSupply::chargeFull,
                           &PowerSupply::chargeFullDesign};
  constexpr Amounts energy{&PowerSupply::energyNow, &PowerSupply::energyFull,
                           &PowerSupply::energyFullDesign};
  return sum(batteries, charge.full) ? charge : energy;
}

/// Millionths of a watt that a battery takes or gives.
std::optional<double> powerOf(const PowerSupply& battery) {
  // Drivers don't agree on the sign of what a battery gives; the status tells the direction.
  if (battery.powerNow) return std::abs(static_cast<double>(*battery.powerNow));
  if (!battery.currentNow || !battery.voltageNow) return std::nullopt;
  return std::abs(static_cast<double>(*battery.currentNow)) *
         static_cast<double>(*battery.voltageNow) / 1e6;
}

std::optional<double> totalPower(const std::vector<PowerSupply>& batteries) {
  std::optional<double> total;
  for (const PowerSupply& battery : batteries) {
    if (const auto power = powerOf(battery)) total = total.value_or(0) + *power;
  }
  return total;
}

PropertyValue whole(double number) {
  constexpr double most = 9e15;
  return PropertyValue{static_cast<std::int64_t>(std::llround(std::clamp(number, -most, most)))};
}

void putThousandths(PropertyMap& map, const char* key, const Figure& millionths) {
  if (millionths) map[key] = whole(static_cast<double>(*millionths) / 1000);
}

/// Rates and amounts must be of one kind for a time: power goes with energy.
void putRemainingTime(PropertyMap& map, const std::vector<PowerSupply>& batteries, bool charging) {
  const auto power = totalPower(batteries);
  double energyNow = 0;
  double energyFull = 0;
  for (const PowerSupply& battery : batteries) {
    const double volts =
        battery.energyNow ? 1 : static_cast<double>(battery.voltageNow.value_or(0)) / 1e6;
    const auto now = battery.energyNow ? battery.energyNow : battery.chargeNow;
    const auto full = battery.energyNow ? battery.energyFull : battery.chargeFull;
    energyNow += static_cast<double>(now.value_or(0)) * volts;
    energyFull += static_cast<double>(full.value_or(0)) * volts;
  }
  const double left = charging ? energyFull - energyNow : energyNow;
  if (!power || *power < 1 || left <= 0) return;
  map[charging ? "Time to Full Charge" : "Time to Empty"] = whole(left / *power * 60);
}

void putAmounts(PropertyMap& map, const std::vector<PowerSupply>& batteries) {
  const Amounts amounts = amountsOf(batteries);
  const Figure now = sum(batteries, amounts.now);
  const Figure full = sum(batteries, amounts.full);
  const Figure percents = sum(batteries, &PowerSupply::capacityPercent);
  if (now && full && *full > 0) {
    putThousandths(map, "Current Capacity", now);
    putThousandths(map, "Max Capacity", full);
  } else if (percents) {
    map["Current Capacity"] = PropertyValue{*percents};
    map["Max Capacity"] = PropertyValue{static_cast<std::int64_t>(batteries.size()) * 100};
  }
}

}  // namespace

std::optional<PropertyMap> powerSourceDescription(const std::vector<PowerSupply>& supplies) {
  const auto batteries = batteriesOf(supplies);
  if (batteries.empty()) return std::nullopt;
  const bool charging = anyHasStatus(batteries, "Charging");
  PropertyMap map;
  putAmounts(map, batteries);
  map["Is Charging"] = PropertyValue{charging};
  map["Power Source State"] =
      PropertyValue{std::string(isOnMains(supplies) ? "AC Power" : "Battery Power")};
  if (charging || anyHasStatus(batteries, "Discharging")) {
    putRemainingTime(map, batteries, charging);
  }
  return map;
}

std::optional<PropertyMap> batteryProperties(const std::vector<PowerSupply>& supplies) {
  const auto batteries = batteriesOf(supplies);
  if (batteries.empty()) return std::nullopt;
  PropertyMap map;
  const Amounts amounts = amountsOf(batteries);
  putThousandths(map, "AppleRawMaxCapacity", sum(batteries, amounts.full));
  putThousandths(map, "DesignCapacity", sum(batteries, amounts.design));
  std::int64_t cycles = 0;
  for (const PowerSupply& pack : batteries) cycles = std::max(cycles, pack.cycleCount.value_or(0));
  // Many batteries that don't count say 0.
  if (cycles > 0) map["CycleCount"] = PropertyValue{cycles};
  if (const auto celsius = batteryCelsius(supplies)) {
    // 0 degrees are 2731.5 tenths; cut, they come out as the same tenth of a degree again.
    map["Temperature"] = whole(std::floor(*celsius * 10 + 0.5) + 2731);
  }
  const auto voltage = batteries.front().voltageNow;
  putThousandths(map, "Voltage", voltage);
  const auto power = totalPower(batteries);
  if (power && voltage && *voltage > 0) {
    const double milliamperes = *power / static_cast<double>(*voltage) * 1000;
    const double sign = anyHasStatus(batteries, "Discharging") ? -1 : 1;
    map["InstantAmperage"] = whole(sign * milliamperes);
  }
  return map;
}

std::optional<double> dischargingWatts(const std::vector<PowerSupply>& supplies) {
  auto batteries = batteriesOf(supplies);
  std::erase_if(batteries, [](const PowerSupply& pack) { return pack.status != "Discharging"; });
  const auto power = totalPower(batteries);
  return power ? std::optional(*power / 1e6) : std::nullopt;
}

std::optional<double> batteryCelsius(const std::vector<PowerSupply>& supplies) {
  std::optional<double> hottest;
  for (const PowerSupply& battery : batteriesOf(supplies)) {
    if (!battery.temperature) continue;
    hottest = std::max(hottest.value_or(-1e9), static_cast<double>(*battery.temperature) / 10);
  }
  return hottest;
}

}  // namespace korvantis
