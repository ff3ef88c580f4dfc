#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/Field.h"

namespace korvantis {

/// One running container. Rates are bytes per second.
struct ContainerSample {
  /// The engine's container id.
  std::string id;
  std::string name;
  std::string image;
  /// Label of the engine.
  std::string engine = "Docker";
  std::string status = "Up";
  std::optional<std::string> composeProject;
  std::optional<std::string> composeService;
  /// Working directory of the compose project.
  std::optional<std::string> workingDirectory;
  /// Published host ports.
  std::vector<std::uint16_t> ports;
  double cpuPercent = 0;
  std::uint64_t memoryBytes = 0;
  double networkRxBytesPerSec = 0;
  double networkTxBytesPerSec = 0;
  double blockReadBytesPerSec = 0;
  double blockWriteBytesPerSec = 0;

  bool operator==(const ContainerSample&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return id; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"id", &ContainerSample::id},
                      Field{"name", &ContainerSample::name},
                      Field{"image", &ContainerSample::image},
                      Field{"engine", &ContainerSample::engine},
                      Field{"status", &ContainerSample::status},
                      Field{"composeProject", &ContainerSample::composeProject},
                      Field{"composeService", &ContainerSample::composeService},
                      Field{"workingDirectory", &ContainerSample::workingDirectory},
                      Field{"ports", &ContainerSample::ports},
                      Field{"cpuPercent", &ContainerSample::cpuPercent},
                      Field{"memoryBytes", &ContainerSample::memoryBytes},
                      Field{"networkRxBytesPerSec", &ContainerSample::networkRxBytesPerSec},
                      Field{"networkTxBytesPerSec", &ContainerSample::networkTxBytesPerSec},
                      Field{"blockReadBytesPerSec", &ContainerSample::blockReadBytesPerSec},
                      Field{"blockWriteBytesPerSec", &ContainerSample::blockWriteBytesPerSec}};
  }
};

}  // namespace korvantis
