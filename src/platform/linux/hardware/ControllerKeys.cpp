#include "platform/linux/hardware/ControllerKeys.h"

#include <algorithm>
#include <bit>
#include <string>
#include <utility>

#include "platform/SMCCalls.h"
#include "platform/linux/hardware/BatteryDescription.h"

namespace korvantis {
namespace {

constexpr double readingAge = 0.25;
constexpr std::size_t mostFans = 10;

using Values = std::map<std::uint32_t, ControllerValue>;

void put(Values& values, std::string_view key, const std::optional<double>& number) {
  if (!number) return;
  const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(*number));
  ControllerValue value{smcFourCharacterCode("flt "), {}};
  for (unsigned shift = 0; shift < 32; shift += 8) {
    value.bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
  }
  values[smcFourCharacterCode(key)] = std::move(value);
}

/// The hottest sensors of a role under these keys, as many as there are.
void putHottest(Values& values, const SensorReading& reading, SensorRole role,
                std::initializer_list<std::string_view> keys) {
  const auto found = reading.celsius.find(role);
  if (found == reading.celsius.end()) return;
  auto celsius = found->second.begin();
  for (const std::string_view key : keys) {
    if (celsius == found->second.end()) return;
    put(values, key, *celsius++);
  }
}

void putTemperatures(Values& values, const SensorReading& reading) {
  putHottest(values, reading, SensorRole::firstDie, {"Tp01"});
  putHottest(values, reading, SensorRole::secondDie, {"Tp05"});
  putHottest(values, reading, SensorRole::thirdDie, {"Tp09"});
  putHottest(values, reading, SensorRole::performanceCore, {"Tp01", "Tp05", "Tp09"});
  putHottest(values, reading, SensorRole::efficiencyCore, {"Te05", "Tf04"});
  putHottest(values, reading, SensorRole::processorPackage, {"TC0P"});
  putHottest(values, reading, SensorRole::graphicsEdge, {"Tg05"});
  putHottest(values, reading, SensorRole::graphicsJunction, {"Tg0D"});
  putHottest(values, reading, SensorRole::drive, {"TH0x"});
  putHottest(values, reading, SensorRole::wireless, {"TW0P"});
}

void putFans(Values& values, const std::vector<FanSpeeds>& fans) {
  if (fans.empty()) return;
  const std::size_t count = std::min(fans.size(), mostFans);
  values[smcFourCharacterCode("FNum")] = {smcFourCharacterCode("ui8 "),
                                          {static_cast<std::uint8_t>(count)}};
  for (std::size_t index = 0; index < count; ++index) {
    const std::string fan = "F" + std::to_string(index);
    put(values, fan + "Ac", fans[index].current);
    put(values, fan + "Mn", fans[index].minimum);
    put(values, fan + "Mx", fans[index].maximum);
  }
}

}  // namespace

ControllerKeys::ControllerKeys(const HardwareSources& sources, PowerSupplies& powerSupplies,
                               std::function<std::optional<double>()> celsiusOfGraphics)
    : monotonicSeconds(sources.monotonicSeconds),
      graphicsCelsius(std::move(celsiusOfGraphics)),
      supplies(powerSupplies),
      sensors(sources),
      energy(sources) {}

void ControllerKeys::refresh() {
  values.clear();
  const SensorReading reading = sensors.read();
  putTemperatures(values, reading);
  putFans(values, reading.fans);
  if (!values.contains(smcFourCharacterCode("Tg05"))) put(values, "Tg05", graphicsCelsius());
  const auto packs = supplies.read().value_or(std::vector<PowerSupply>());
  put(values, "TB0T", batteryCelsius(packs));
  // On mains the battery tells nothing of what the machine takes.
  const auto discharging = dischargingWatts(packs);
  const auto platform = energy.watts();
  put(values, "PSTR", discharging ? discharging : platform);
}

std::optional<ControllerValue> ControllerKeys::value(std::uint32_t key) {
  const std::scoped_lock guard(lock);
  if (!readAt || monotonicSeconds() - *readAt >= readingAge) {
    refresh();
    // From its end on, or sensors that take longer than that would be read for each key anew.
    readAt = monotonicSeconds();
  }
  const auto found = values.find(key);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace korvantis
