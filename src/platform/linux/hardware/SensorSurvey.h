#pragma once

#include <string>
#include <vector>

namespace korvantis {

/// What a temperature is taken of.
enum class SensorRole {
  processorPackage,
  performanceCore,
  efficiencyCore,
  firstDie,
  secondDie,
  thirdDie,
  graphicsEdge,
  graphicsJunction,
  drive,
  wireless,
};

/// A temperature that the kernel measures, in thousandths of a degree Celsius.
struct SensorPlace {
  SensorRole role = SensorRole::processorPackage;
  std::string path;
  /// Tells whether the device sleeps, and a reading would wake it; empty for those that never do.
  std::string sleepPath;

  bool operator==(const SensorPlace&) const = default;
};

/// The files of one fan, in turns a minute; empty where there is none.
struct FanPlace {
  std::string input;
  std::string minimum;
  std::string maximum;
  std::string sleepPath;

  bool operator==(const FanPlace&) const = default;
};

/// The sensors that are understood, and all fans in the order of their devices and numbers.
struct SensorSurvey {
  std::vector<SensorPlace> sensors;
  std::vector<FanPlace> fans;

  bool operator==(const SensorSurvey&) const = default;
};

/// Looks through `/sys/class/hwmon` below a root folder. Takes dozens of file reads. Any thread.
SensorSurvey surveySensors(const std::string& root);

}  // namespace korvantis
