#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/Field.h"
#include "core/MachineDefaults.h"

namespace korvantis {

/// What the machine is; read once.
struct HardwareInfo {
  /// Marketing name of the chip.
  std::string chipName = "Apple Silicon";
  /// Logical processor cores.
  std::int64_t logicalCores = 10;
  std::int64_t performanceCores = 6;
  std::int64_t efficiencyCores = 4;
  std::string gpuName = "Apple Integrated GPU";
  std::int64_t gpuCores = 10;
  std::int64_t neuralEngineCores = 16;
  /// Installed memory in bytes.
  std::uint64_t totalMemoryBytes = machineMemoryBytes();

  bool operator==(const HardwareInfo&) const = default;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"chipName", &HardwareInfo::chipName},
                      Field{"logicalCores", &HardwareInfo::logicalCores},
                      Field{"performanceCores", &HardwareInfo::performanceCores},
                      Field{"efficiencyCores", &HardwareInfo::efficiencyCores},
                      Field{"gpuName", &HardwareInfo::gpuName},
                      Field{"gpuCores", &HardwareInfo::gpuCores},
                      Field{"neuralEngineCores", &HardwareInfo::neuralEngineCores},
                      Field{"totalMemoryBytes", &HardwareInfo::totalMemoryBytes}};
  }
};

}  // namespace korvantis
