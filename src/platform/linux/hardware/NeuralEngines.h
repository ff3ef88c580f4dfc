#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/HardwareSources.h"

namespace korvantis {

/// How busy the neural processors of `/sys/class/accel` are. Which there are is looked up every 30
/// seconds. One thread at a time.
class NeuralEngines {
 public:
  explicit NeuralEngines(const HardwareSources& sources);

  /// For each engine the percent of the time since the last reading that it worked; absent at the
  /// first reading and where its driver does not tell.
  std::vector<std::optional<double>> busyPercents();

 private:
  struct Engine {
    AttributeFile busyMicroseconds;
    std::optional<double> readAt;
    std::int64_t last = 0;
  };

  void look();
  static std::optional<double> advance(Engine& engine, double now);

  const std::string folder;
  const std::function<double()> monotonicSeconds;
  std::optional<double> lookedAt;
  std::vector<std::string> lastFolders;
  std::vector<Engine> engines;
};

}  // namespace korvantis
