#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/ContainerSample.h"
#include "core/Field.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// Processes and containers folded into one development project. Rates are bytes per second.
struct DevProject {
  std::string name;
  std::string path;
  double cpuPercent = 0;
  double gpuPercent = 0;
  std::uint64_t memoryBytes = 0;
  /// Share of installed memory, 0 to 100.
  double memoryPercent = 0;
  double networkInBytesPerSec = 0;
  double networkOutBytesPerSec = 0;
  double diskReadBytesPerSec = 0;
  double diskWriteBytesPerSec = 0;
  double energyWatts = 0;
  std::vector<std::uint16_t> ports;
  std::vector<ProcessSample> processes;
  std::vector<ContainerSample> containers;

  bool operator==(const DevProject&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return path; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"name", &DevProject::name},
                      Field{"path", &DevProject::path},
                      Field{"cpuPercent", &DevProject::cpuPercent},
                      Field{"gpuPercent", &DevProject::gpuPercent},
                      Field{"memoryBytes", &DevProject::memoryBytes},
                      Field{"memoryPercent", &DevProject::memoryPercent},
                      Field{"networkInBytesPerSec", &DevProject::networkInBytesPerSec},
                      Field{"networkOutBytesPerSec", &DevProject::networkOutBytesPerSec},
                      Field{"diskReadBytesPerSec", &DevProject::diskReadBytesPerSec},
                      Field{"diskWriteBytesPerSec", &DevProject::diskWriteBytesPerSec},
                      Field{"energyWatts", &DevProject::energyWatts},
                      Field{"ports", &DevProject::ports},
                      Field{"processes", &DevProject::processes},
                      Field{"containers", &DevProject::containers}};
  }
};

}  // namespace korvantis
