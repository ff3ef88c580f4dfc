#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/BatterySample.h"
#include "core/Field.h"
#include "core/Instant.h"
#include "core/MachineDefaults.h"
#include "core/MemoryPressureLevel.h"
#include "core/ThermalSample.h"

namespace korvantis {

/// The machine's figures of one tick. As made by default it is what stands in before the first
/// tick. Percents are 0 to 100, memory and disk sizes bytes, rates bytes per second.
struct SystemSample {
  /// When the sample was taken.
  Instant timestamp = Instant::now();
  /// Busy share of the whole machine.
  double cpuPercent = 0;
  /// Its share in user mode.
  double cpuUserPercent = 0;
  /// Its share in system mode.
  double cpuSystemPercent = 0;
  /// One figure a core, in core order.
  std::vector<double> perCoreCPUPercent;
  double loadAverage1m = 0;
  double loadAverage5m = 0;
  double loadAverage15m = 0;
  /// Installed memory.
  std::uint64_t memoryTotalBytes = machineMemoryBytes();
  /// Memory counted as used.
  std::uint64_t memoryUsedBytes = 0;
  std::uint64_t memoryAppBytes = 0;
  std::uint64_t memoryWiredBytes = 0;
  std::uint64_t memoryCompressedBytes = 0;
  /// Cached files.
  std::uint64_t memoryCachedBytes = 0;
  std::uint64_t swapUsedBytes = 0;
  double memoryPressurePercent = 12.0;
  MemoryPressureLevel memoryPressure = MemoryPressureLevel::normal;
  double gpuPercent = 0;
  /// Memory that the GPU holds.
  std::uint64_t gpuMemoryBytes = 0;
  double neuralEnginePercent = 0;
  double neuralEngineWatts = 0;
  /// Name of what holds the Neural Engine.
  std::optional<std::string> neuralEngineHolder;
  double diskReadBytesPerSec = 0;
  double diskWriteBytesPerSec = 0;
  /// Capacity of the boot volume.
  std::uint64_t diskTotalBytes = 0;
  /// Free space of the boot volume.
  std::uint64_t diskFreeBytes = 0;
  double networkInBytesPerSec = 0;
  double networkOutBytesPerSec = 0;
  /// Received since start, all interfaces.
  std::uint64_t totalNetworkInBytes = 0;
  /// Sent since start, all interfaces.
  std::uint64_t totalNetworkOutBytes = 0;
  std::optional<BatterySample> battery;
  ThermalSample thermal;

  bool operator==(const SystemSample&) const = default;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"timestamp", &SystemSample::timestamp},
                      Field{"cpuPercent", &SystemSample::cpuPercent},
                      Field{"cpuUserPercent", &SystemSample::cpuUserPercent},
                      Field{"cpuSystemPercent", &SystemSample::cpuSystemPercent},
                      Field{"perCoreCPUPercent", &SystemSample::perCoreCPUPercent},
                      Field{"loadAverage1m", &SystemSample::loadAverage1m},
                      Field{"loadAverage5m", &SystemSample::loadAverage5m},
                      Field{"loadAverage15m", &SystemSample::loadAverage15m},
                      Field{"memoryTotalBytes", &SystemSample::memoryTotalBytes},
                      Field{"memoryUsedBytes", &SystemSample::memoryUsedBytes},
                      Field{"memoryAppBytes", &SystemSample::memoryAppBytes},
                      Field{"memoryWiredBytes", &SystemSample::memoryWiredBytes},
                      Field{"memoryCompressedBytes", &SystemSample::memoryCompressedBytes},
                      Field{"memoryCachedBytes", &SystemSample::memoryCachedBytes},
                      Field{"swapUsedBytes", &SystemSample::swapUsedBytes},
                      Field{"memoryPressurePercent", &SystemSample::memoryPressurePercent},
                      Field{"memoryPressure", &SystemSample::memoryPressure},
                      Field{"gpuPercent", &SystemSample::gpuPercent},
                      Field{"gpuMemoryBytes", &SystemSample::gpuMemoryBytes},
                      Field{"neuralEnginePercent", &SystemSample::neuralEnginePercent},
                      Field{"neuralEngineWatts", &SystemSample::neuralEngineWatts},
                      Field{"neuralEngineHolder", &SystemSample::neuralEngineHolder},
                      Field{"diskReadBytesPerSec", &SystemSample::diskReadBytesPerSec},
                      Field{"diskWriteBytesPerSec", &SystemSample::diskWriteBytesPerSec},
                      Field{"diskTotalBytes", &SystemSample::diskTotalBytes},
                      Field{"diskFreeBytes", &SystemSample::diskFreeBytes},
                      Field{"networkInBytesPerSec", &SystemSample::networkInBytesPerSec},
                      Field{"networkOutBytesPerSec", &SystemSample::networkOutBytesPerSec},
                      Field{"totalNetworkInBytes", &SystemSample::totalNetworkInBytes},
                      Field{"totalNetworkOutBytes", &SystemSample::totalNetworkOutBytes},
                      Field{"battery", &SystemSample::battery},
                      Field{"thermal", &SystemSample::thermal}};
  }
};

}  // namespace korvantis
