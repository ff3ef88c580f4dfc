#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/AppGroupKind.h"
#include "core/Field.h"
#include "core/HelperShare.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// Processes folded into one application. Figures are sums over its processes; rates are bytes
/// per second.
struct AppGroup {
  /// Stable key of the group: the bundle path, or a prefix and the process name.
  std::string id;
  /// Display name.
  std::string name;
  AppGroupKind kind = AppGroupKind::app;
  std::optional<std::string> bundlePath;
  std::optional<std::string> bundleIdentifier;
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
  /// Its members, largest memory first.
  std::vector<ProcessSample> processes;
  /// Breakdown by role.
  std::vector<HelperShare> helperShares;

  bool operator==(const AppGroup&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return id; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"id", &AppGroup::id},
                      Field{"name", &AppGroup::name},
                      Field{"kind", &AppGroup::kind},
                      Field{"bundlePath", &AppGroup::bundlePath},
                      Field{"bundleIdentifier", &AppGroup::bundleIdentifier},
                      Field{"cpuPercent", &AppGroup::cpuPercent},
                      Field{"gpuPercent", &AppGroup::gpuPercent},
                      Field{"memoryBytes", &AppGroup::memoryBytes},
                      Field{"memoryPercent", &AppGroup::memoryPercent},
                      Field{"networkInBytesPerSec", &AppGroup::networkInBytesPerSec},
                      Field{"networkOutBytesPerSec", &AppGroup::networkOutBytesPerSec},
                      Field{"diskReadBytesPerSec", &AppGroup::diskReadBytesPerSec},
                      Field{"diskWriteBytesPerSec", &AppGroup::diskWriteBytesPerSec},
                      Field{"energyWatts", &AppGroup::energyWatts},
                      Field{"processes", &AppGroup::processes},
                      Field{"helperShares", &AppGroup::helperShares}};
  }
};

}  // namespace korvantis
