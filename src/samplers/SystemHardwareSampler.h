#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/BatterySample.h"
#include "core/BluetoothPeripheral.h"
#include "core/HardwareInfo.h"
#include "core/Instant.h"
#include "core/MountedVolume.h"
#include "core/SleepBlocker.h"
#include "core/SystemSample.h"
#include "platform/PlatformCalls.h"
#include "samplers/AppleSMCReader.h"
#include "samplers/CoreTicks.h"
#include "samplers/GPUAndANESample.h"
#include "samplers/GPUTimeByPID.h"

namespace korvantis {

/// Says what the machine is and what it is doing: processor, memory, disk, network, GPU, battery,
/// what keeps it awake, and what is connected. It remembers the counters of its last sample, so
/// that it can state rates. Nothing here fails: where the system gives no data, fixed figures
/// stand in. Any thread; samples may overlap.
class SystemHardwareSampler {
 public:
  /// Asks `platform` for everything but temperatures, power and fans, which come from
  /// `thermalReader`; that must outlive it.
  explicit SystemHardwareSampler(PlatformCalls platform,
                                 AppleSMCReader& thermalReader = AppleSMCReader::shared());

  /// What the machine is. The system is asked once; later calls give the same record.
  HardwareInfo readHardwareInfo();

  /// GPU time that each process has used since it began, in nanoseconds; empty when the
  /// system tells nothing.
  GPUTimeByPID readPerPIDGPUTime() const;

  /// The figures of this moment. Rates are measured since the last sample of any caller, those of
  /// disk and network over at least 0.2 s; the first sample has none. `topProcessForANE` names
  /// the holder of the Neural Engine where the system does not.
  SystemSample sampleSystem(const std::optional<std::string>& topProcessForANE);

  /// The state of the battery: always there, with fixed figures on a machine without one.
  std::optional<BatterySample> sampleBattery() const;

  /// What keeps the machine awake, by process name.
  std::vector<SleepBlocker> sampleSleepBlockers() const;

  /// The connected Bluetooth devices with a battery.
  std::vector<BluetoothPeripheral> sampleBluetoothPeripherals() const;

  /// The mounted volumes that people know of.
  std::vector<MountedVolume> sampleMountedVolumes() const;

 private:
  double exchangeSampleDate(Instant now);
  void sampleCPU(SystemSample& sample);
  void sampleLoadAverages(SystemSample& sample) const;
  void sampleMemory(SystemSample& sample) const;
  GPUAndANESample sampleGPUAndANE(const std::optional<std::string>& fallbackANEHolder) const;
  void sampleDisk(SystemSample& sample, double elapsed);
  void sampleRootVolume(SystemSample& sample) const;
  void sampleNetwork(SystemSample& sample, double elapsed);

  const PlatformCalls calls;
  AppleSMCReader& thermal;

  /// Guards the fields below, for a short exchange each. Never held while asking the system.
  std::mutex lock;
  /// The cumulative ticks of each core at the last sample.
  std::vector<CoreTicks> previousCoreTicks;
  std::uint64_t previousDiskReadBytes = 0;
  std::uint64_t previousDiskWriteBytes = 0;
  std::uint64_t previousNetInBytes = 0;
  std::uint64_t previousNetOutBytes = 0;
  std::optional<Instant> previousSampleDate;
  std::optional<HardwareInfo> cachedHardwareInfo;
};

}  // namespace korvantis
