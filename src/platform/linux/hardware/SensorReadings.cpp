#include "platform/linux/hardware/SensorReadings.h"

#include <algorithm>
#include <set>

namespace korvantis {
namespace {

constexpr double lookPace = 30.0;

std::set<std::string> pathsOf(const SensorSurvey& survey) {
  std::set<std::string> paths;
  for (const SensorPlace& sensor : survey.sensors) {
    paths.insert({sensor.path, sensor.sleepPath});
  }
  for (const FanPlace& fan : survey.fans) {
    paths.insert({fan.input, fan.minimum, fan.maximum, fan.sleepPath});
  }
  paths.erase("");
  return paths;
}

std::optional<double> turns(const std::optional<std::int64_t>& number) {
  return number && *number >= 0 ? std::optional(static_cast<double>(*number)) : std::nullopt;
}

}  // namespace

SensorReadings::SensorReadings(const HardwareSources& sources)
    : root(sources.root), monotonicSeconds(sources.monotonicSeconds) {}

void SensorReadings::look() {
  SensorSurvey found = surveySensors(root);
  if (found == survey) return;
  survey = std::move(found);
  std::map<std::string, AttributeFile> open;
  for (const std::string& path : pathsOf(survey)) {
    auto known = files.extract(path);
    if (known.empty()) {
      open.emplace(path, AttributeFile(path));
    } else {
      open.insert(std::move(known));
    }
  }
  files = std::move(open);
}

std::optional<std::int64_t> SensorReadings::number(const std::string& path) {
  const auto file = files.find(path);
  return file == files.end() ? std::nullopt : file->second.number();
}

bool SensorReadings::isAsleep(const std::string& sleepPath) {
  const auto file = files.find(sleepPath);
  return file != files.end() && file->second.text().value_or("").starts_with("suspend");
}

SensorReading SensorReadings::read() {
  const double now = monotonicSeconds();
  if (!lookedAt || now - *lookedAt >= lookPace) {
    lookedAt = now;
    look();
  }
  SensorReading reading;
  for (const SensorPlace& sensor : survey.sensors) {
    if (isAsleep(sensor.sleepPath)) continue;
    const auto thousandths = number(sensor.path);
    if (!thousandths) continue;
    reading.celsius[sensor.role].push_back(static_cast<double>(*thousandths) / 1000);
  }
  for (auto& [role, values] : reading.celsius) {
    std::sort(values.begin(), values.end(), std::greater());
  }
  for (const FanPlace& fan : survey.fans) {
    const bool asleep = isAsleep(fan.sleepPath);
    reading.fans.push_back({asleep ? std::nullopt : turns(number(fan.input)),
                            turns(number(fan.minimum)), turns(number(fan.maximum))});
  }
  return reading;
}

}  // namespace korvantis
