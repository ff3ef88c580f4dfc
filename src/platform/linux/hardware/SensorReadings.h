#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/SensorSurvey.h"

namespace korvantis {

/// A fan now, in turns a minute; absent what it does not tell.
struct FanSpeeds {
  std::optional<double> current;
  std::optional<double> minimum;
  std::optional<double> maximum;
};

/// All understood sensors now.
struct SensorReading {
  /// Degrees Celsius by role, hottest first.
  std::map<SensorRole, std::vector<double>> celsius;
  std::vector<FanSpeeds> fans;
};

/// The machine's sensors behind descriptors that stay open. Which there are is looked up every 30
/// seconds, since devices come, go and change their numbers. One thread at a time.
class SensorReadings {
 public:
  explicit SensorReadings(const HardwareSources& sources);

  SensorReading read();

 private:
  void look();
  std::optional<std::int64_t> number(const std::string& path);
  bool isAsleep(const std::string& sleepPath);

  const std::string root;
  const std::function<double()> monotonicSeconds;
  std::optional<double> lookedAt;
  SensorSurvey survey;
  std::map<std::string, AttributeFile> files;
};

}  // namespace korvantis
