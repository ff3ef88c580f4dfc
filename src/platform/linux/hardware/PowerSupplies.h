#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/hardware/AttributeFile.h"
#include "platform/linux/hardware/HardwareSources.h"
#include "platform/linux/hardware/PowerSupplyText.h"

namespace korvantis {

/// The power supplies of the machine. Each is one open file; which there are is looked up every 30
/// seconds. All who ask within half a second get the same reading. Any thread.
class PowerSupplies {
 public:
  explicit PowerSupplies(const HardwareSources& sources);

  /// The supplies of this machine, those of peripherals and empty bays left out; absent when the
  /// kernel knows of no such thing as power supplies.
  std::optional<std::vector<PowerSupply>> read();

 private:
  void look();

  const std::string folder;
  const std::function<double()> monotonicSeconds;

  /// Held while reading: a second thread then takes what the first has just read.
  std::mutex lock;
  std::optional<double> lookedAt;
  std::optional<double> readAt;
  bool hasFolder = false;
  std::map<std::string, AttributeFile> files;
  std::vector<PowerSupply> supplies;
};

}  // namespace korvantis
