#include "samplers/AppleSMCReader.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "core/Rounding.h"
#include "platform/ProcessInfoCalls.h"
#include "samplers/SMCValue.h"
#include "samplers/ThermalSensors.h"

namespace korvantis {
namespace {

// A sensor beyond these does not measure what its name says.
constexpr double sensorAboveCelsius = 10;
constexpr double sensorBelowCelsius = 125;
constexpr double powerAboveWatts = 0.5;
constexpr double powerBelowWatts = 240;
constexpr std::int64_t mostFans = 4;
constexpr double usualMinimumRPM = 1200.0;
constexpr double usualMaximumRPM = 5800.0;
constexpr double leastTargetRPM = 1200.0;
constexpr double greatestTargetRPM = 6200.0;
constexpr double greatestEstimatedRPM = 5400;

std::uint32_t openController(const SMCCalls& calls) {
  const std::uint32_t service = calls.IOServiceGetMatchingService("AppleSMC");
  if (service == 0) return 0;
  std::uint32_t connection = 0;
  if (calls.IOServiceOpen(service, 0, &connection) != 0) connection = 0;
  calls.IOObjectRelease(service);
  return connection;
}

std::optional<double> meanOfGroup(const std::vector<SensorItem>& sensors, std::string_view group) {
  double sum = 0;
  int count = 0;
  for (const SensorItem& sensor : sensors) {
    if (sensor.group != group) continue;
    sum += sensor.celsius;
    ++count;
  }
  return count > 0 ? std::optional(sum / count) : std::nullopt;
}

/// What a fan would do at this temperature.
double estimatedRPM(double cpuCelsius) {
  if (!(cpuCelsius > 62)) return 0;
  return std::min((cpuCelsius - 60) * 95 + 1400, greatestEstimatedRPM);
}

/// A count of fans, cut toward zero; a figure beyond all sense counts as many.
std::int64_t wholeFanCount(double told) {
  constexpr double beyond = 1'000'000;
  return static_cast<std::int64_t>(std::clamp(told, -beyond, beyond));
}

std::string fanName(std::int64_t index, std::int64_t count) {
  if (count == 1) return "System Fan";
  return index == 0 ? "Left Fan" : "Right Fan";
}

void setHottest(ThermalSample& sample) {
  sample.hottestCelsius = sample.cpuCelsius;
  sample.hottestSensorName = "CPU Core";
  bool any = false;
  for (const SensorItem& sensor : sample.sensors) {
    if (any && !(sensor.celsius > sample.hottestCelsius)) continue;
    sample.hottestCelsius = sensor.celsius;
    sample.hottestSensorName = sensor.name;
    any = true;
  }
}

}  // namespace

AppleSMCReader::AppleSMCReader(SMCCalls controller, std::function<std::int64_t()> stateOfSystem)
    : calls(std::move(controller)),
      thermalState(std::move(stateOfSystem)),
      connection(openController(calls)) {}

AppleSMCReader::~AppleSMCReader() {
  if (connection != 0) calls.IOServiceClose(connection);
}

AppleSMCReader& AppleSMCReader::shared() {
  static AppleSMCReader& reader =
      *new AppleSMCReader(systemSMCCalls(), systemProcessInfoCalls().thermalState);
  return reader;
}

std::optional<SMCKeyData> AppleSMCReader::exchange(const SMCKeyData& request) {
  SMCKeyData reply;
  std::size_t size = sizeof reply;
  const int failure = calls.IOConnectCallStructMethod(connection, smcExchangeSelector, &request,
                                                      sizeof request, &reply, &size);
  return failure == 0 && reply.result == 0 ? std::optional(reply) : std::nullopt;
}

std::optional<double> AppleSMCReader::readDouble(std::string_view key) {
  const std::scoped_lock guard(lock);
  if (connection == 0) return std::nullopt;
  SMCKeyData request;
  request.key = smcFourCharacterCode(key);
  request.data8 = smcKeyInformationCommand;
  const auto information = exchange(request);
  if (!information || information->dataSize == 0) return std::nullopt;
  request.dataSize = information->dataSize;
  request.data8 = smcReadKeyCommand;
  const auto reply = exchange(request);
  if (!reply) return std::nullopt;
  return smcValue(information->dataType, information->dataSize, reply->bytes);
}

std::vector<SensorItem> AppleSMCReader::readSensors() {
  std::vector<SensorItem> sensors;
  for (const SensorKey& sensor : sensorKeys) {
    const auto celsius = readDouble(sensor.key);
    if (!celsius || !(*celsius > sensorAboveCelsius && *celsius < sensorBelowCelsius)) continue;
    sensors.push_back({sensor.name, sensor.group, roundedToOneDecimal(*celsius)});
  }
  return sensors;
}

ThermalSample AppleSMCReader::sampleThermal(double cpuLoadPercent, double gpuLoadPercent) {
  ThermalSample sample;
  sample.sensors = readSensors();
  if (sample.sensors.empty()) sample.sensors = estimatedSensors(cpuLoadPercent, gpuLoadPercent);
  const double cpuCelsius = meanOfGroup(sample.sensors, "CPU").value_or(0);
  sample.cpuCelsius = cpuCelsius;
  sample.gpuCelsius = meanOfGroup(sample.sensors, "GPU").value_or(cpuCelsius - 2.5);
  setHottest(sample);
  const auto watts = readDouble("PSTR");
  const bool measured = watts && *watts > powerAboveWatts && *watts < powerBelowWatts;
  sample.systemPowerWatts = measured ? *watts : cpuLoadPercent * 0.22 + 4.8 + gpuLoadPercent * 0.18;
  sample.fans = readFans(cpuCelsius);
  const std::int64_t state = thermalState();
  sample.thermalStateLevel = state >= 1 && state <= 3 ? state : 0;
  sample.cpuCelsius = roundedToOneDecimal(sample.cpuCelsius);
  sample.gpuCelsius = roundedToOneDecimal(sample.gpuCelsius);
  sample.hottestCelsius = roundedToOneDecimal(sample.hottestCelsius);
  sample.systemPowerWatts = roundedToOneDecimal(sample.systemPowerWatts);
  return sample;
}

std::vector<FanReading> AppleSMCReader::readFans(double cpuCelsius) {
  std::vector<FanReading> fans;
  const std::int64_t count = wholeFanCount(readDouble("FNum").value_or(0));
  for (std::int64_t index = 0; index < std::min(count, mostFans); ++index) {
    fans.push_back(readFan(index, count));
  }
  if (count >= 1) return fans;
  for (std::int64_t index = 0; index < 2; ++index) {
    fans.push_back(withTarget({.id = index,
                               .name = fanName(index, 2),
                               .currentRPM = estimatedRPM(cpuCelsius),
                               .minRPM = usualMinimumRPM,
                               .maxRPM = usualMaximumRPM,
                               .isManual = false,
                               .targetRPM = std::nullopt}));
  }
  return fans;
}

FanReading AppleSMCReader::readFan(std::int64_t index, std::int64_t count) {
  const std::string key = "F" + std::to_string(index);
  return withTarget({.id = index,
                     .name = fanName(index, count),
                     .currentRPM = readDouble(key + "Ac").value_or(0),
                     .minRPM = readDouble(key + "Mn").value_or(usualMinimumRPM),
                     .maxRPM = readDouble(key + "Mx").value_or(usualMaximumRPM),
                     .isManual = false,
                     .targetRPM = std::nullopt});
}

std::optional<double> AppleSMCReader::fanTarget(std::int64_t fanID) {
  const std::scoped_lock guard(lock);
  const auto found = manualFanTargets.find(fanID);
  return found == manualFanTargets.end() ? std::nullopt : std::optional(found->second);
}

FanReading AppleSMCReader::withTarget(FanReading fan) {
  fan.targetRPM = fanTarget(fan.id);
  fan.isManual = fan.targetRPM.has_value();
  fan.currentRPM = fan.targetRPM.value_or(fan.currentRPM);
  return fan;
}

bool AppleSMCReader::setFanTarget(std::int64_t fanID, std::optional<double> rpm) {
  const std::scoped_lock guard(lock);
  if (rpm) {
    manualFanTargets[fanID] = std::max(leastTargetRPM, std::min(*rpm, greatestTargetRPM));
  } else {
    manualFanTargets.erase(fanID);
  }
  return true;
}

}  // namespace korvantis
