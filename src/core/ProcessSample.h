#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/Field.h"
#include "core/HelperRole.h"
#include "core/Instant.h"

namespace korvantis {

/// One process in one tick. Rates are bytes per second.
struct ProcessSample {
  std::int32_t pid = 0;
  /// Parent process.
  std::int32_t ppid = 0;
  /// The process that the system holds responsible (the owning application), else `pid`.
  std::int32_t responsiblePID = 0;
  std::uint32_t uid = 501;
  /// Short name.
  std::string name;
  /// Full path; empty when unreadable.
  std::string executablePath;
  /// Argument words joined by one blank, or the short name.
  std::string arguments;
  std::optional<std::string> workingDirectory;
  /// Project root; filled by the project locator.
  std::optional<std::string> projectPath;
  /// TCP ports in the listen state, ascending.
  std::vector<std::uint16_t> listeningPorts;
  /// Of one core: 0 to 1600.
  double cpuPercent = 0;
  /// 0 to 100.
  double gpuPercent = 0;
  /// Physical footprint.
  std::uint64_t memoryBytes = 0;
  double diskReadBytesPerSec = 0;
  double diskWriteBytesPerSec = 0;
  /// Estimated from the disk traffic.
  double networkInBytesPerSec = 0;
  /// Estimated from the disk traffic.
  double networkOutBytesPerSec = 0;
  /// Estimated from CPU, GPU and wakeups.
  double energyWatts = 0;
  /// Idle wakeups since the process began.
  std::uint64_t idleWakeups = 0;
  Instant startedAt;
  /// Role inside its application; set by the app grouper.
  HelperRole helperRole = HelperRole::main;

  bool operator==(const ProcessSample&) const = default;

  /// What tells one of these from another in a list.
  std::int32_t identity() const { return pid; }

  /// The listening ports below 49152, in the same order: a port of the ephemeral range is not
  /// shown as a service.
  std::vector<std::uint16_t> servicePorts() const;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"pid", &ProcessSample::pid},
                      Field{"ppid", &ProcessSample::ppid},
                      Field{"responsiblePID", &ProcessSample::responsiblePID},
                      Field{"uid", &ProcessSample::uid},
                      Field{"name", &ProcessSample::name},
                      Field{"executablePath", &ProcessSample::executablePath},
                      Field{"arguments", &ProcessSample::arguments},
                      Field{"workingDirectory", &ProcessSample::workingDirectory},
                      Field{"projectPath", &ProcessSample::projectPath},
                      Field{"listeningPorts", &ProcessSample::listeningPorts},
                      Field{"cpuPercent", &ProcessSample::cpuPercent},
                      Field{"gpuPercent", &ProcessSample::gpuPercent},
                      Field{"memoryBytes", &ProcessSample::memoryBytes},
                      Field{"diskReadBytesPerSec", &ProcessSample::diskReadBytesPerSec},
                      Field{"diskWriteBytesPerSec", &ProcessSample::diskWriteBytesPerSec},
                      Field{"networkInBytesPerSec", &ProcessSample::networkInBytesPerSec},
                      Field{"networkOutBytesPerSec", &ProcessSample::networkOutBytesPerSec},
                      Field{"energyWatts", &ProcessSample::energyWatts},
                      Field{"idleWakeups", &ProcessSample::idleWakeups},
                      Field{"startedAt", &ProcessSample::startedAt},
                      Field{"helperRole", &ProcessSample::helperRole}};
  }
};

}  // namespace korvantis
