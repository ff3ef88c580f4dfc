#include "samplers/SystemHardwareSampler.h"

#include <algorithm>
#include <array>
#include <utility>

#include "samplers/BatteryFigures.h"
#include "samplers/BluetoothPeripheralList.h"
#include "samplers/CPULoad.h"
#include "samplers/DiskCounters.h"
#include "samplers/GPURegistry.h"
#include "samplers/HardwareSurvey.h"
#include "samplers/InterfaceCounters.h"
#include "samplers/MachineRates.h"
#include "samplers/MemoryFigures.h"
#include "samplers/MemoryReadings.h"
#include "samplers/MountedVolumeList.h"
#include "samplers/NeuralEngineClients.h"
#include "samplers/SleepBlockerList.h"
#include "samplers/SysctlHelper.h"

namespace korvantis {
namespace {

constexpr double firstSampleSeconds = 1.0;
// The system tells that the Neural Engine is held, never how busy it is: these stand for "held".
constexpr double heldNeuralEnginePercent = 18.5;
constexpr double heldNeuralEngineWatts = 1.4;
constexpr std::uint64_t unknownDiskTotalBytes = std::uint64_t{512} << 30;
constexpr std::uint64_t unknownDiskFreeBytes = std::uint64_t{128} << 30;

std::uint64_t capacity(std::optional<std::int64_t> told, std::uint64_t unknown) {
  return told ? static_cast<std::uint64_t>(std::max<std::int64_t>(*told, 0)) : unknown;
}

}  // namespace

SystemHardwareSampler::SystemHardwareSampler(PlatformCalls platform, AppleSMCReader& thermalReader)
    : calls(std::move(platform)), thermal(thermalReader) {}

HardwareInfo SystemHardwareSampler::readHardwareInfo() {
  {
    const std::scoped_lock guard(lock);
    if (cachedHardwareInfo) return *cachedHardwareInfo;
  }
  HardwareInfo info = surveyHardware(calls);
  const std::scoped_lock guard(lock);
  cachedHardwareInfo = info;
  return info;
}

GPUTimeByPID SystemHardwareSampler::readPerPIDGPUTime() const {
  return readGPUTimeByPID(calls.ioRegistry);
}

SystemSample SystemHardwareSampler::sampleSystem(
    const std::optional<std::string>& topProcessForANE) {
  // A sample made by default would ask for the time and the installed memory to stand in.
  SystemSample sample{.timestamp = Instant{calls.clock.now()},
                      .perCoreCPUPercent = {},
                      .memoryTotalBytes = 0,
                      .neuralEngineHolder = {},
                      .battery = {},
                      .thermal = {}};
  double elapsed = exchangeSampleDate(sample.timestamp);
  sampleCPU(sample);
  sampleLoadAverages(sample);
  sample.memoryTotalBytes = calls.processInfo.physicalMemory();
  sampleMemory(sample);
  elapsed = std::max(elapsed, machineRateFloorSeconds);
  const GPUAndANESample gpuAndANE = sampleGPUAndANE(topProcessForANE);
  sample.gpuPercent = gpuAndANE.gpuPercent;
  sample.gpuMemoryBytes = gpuAndANE.gpuMemoryBytes;
  sample.neuralEnginePercent = gpuAndANE.anePercent;
  sample.neuralEngineWatts = gpuAndANE.aneWatts;
  sample.neuralEngineHolder = gpuAndANE.aneHolder;
  sampleDisk(sample, elapsed);
  sampleNetwork(sample, elapsed);
  sample.battery = sampleBattery();
  sample.thermal = thermal.sampleThermal(sample.cpuPercent, sample.gpuPercent);
  return sample;
}

/// Seconds from the last sample to `now`, which takes its place.
double SystemHardwareSampler::exchangeSampleDate(Instant now) {
  const std::scoped_lock guard(lock);
  const std::optional<Instant> previous = std::exchange(previousSampleDate, now);
  return previous ? secondsBetween(*previous, now) : firstSampleSeconds;
}

void SystemHardwareSampler::sampleCPU(SystemSample& sample) {
  CPULoad load = cpuLoadWithoutTicks();
  if (const std::vector<CoreTicks> current = readCoreTicks(calls.machHost); !current.empty()) {
    std::vector<CoreTicks> previous = current;
    {
      const std::scoped_lock guard(lock);
      previous.swap(previousCoreTicks);
    }
    load = cpuLoad(previous, current);
  }
  sample.perCoreCPUPercent = std::move(load.perCoreCPUPercent);
  sample.cpuPercent = load.cpuPercent;
  sample.cpuUserPercent = load.cpuUserPercent;
  sample.cpuSystemPercent = load.cpuSystemPercent;
}

void SystemHardwareSampler::sampleLoadAverages(SystemSample& sample) const {
  std::array<double, 3> averages{};
  // Where it fails the zeros stand.
  calls.posix.getloadavg(averages.data(), static_cast<int>(averages.size()));
  sample.loadAverage1m = averages[0];
  sample.loadAverage5m = averages[1];
  sample.loadAverage15m = averages[2];
}

void SystemHardwareSampler::sampleMemory(SystemSample& sample) const {
  const MemoryFigures figures = readMemoryFigures(calls.machHost, sample.memoryTotalBytes);
  sample.memoryUsedBytes = figures.memoryUsedBytes;
  sample.memoryAppBytes = figures.memoryAppBytes;
  sample.memoryWiredBytes = figures.memoryWiredBytes;
  sample.memoryCompressedBytes = figures.memoryCompressedBytes;
  sample.memoryCachedBytes = figures.memoryCachedBytes;
  sample.swapUsedBytes = readSwapUsedBytes(calls.sysctl);
  sample.memoryPressure = memoryPressureOfLevel(
      SysctlHelper::int32(calls.sysctl, "kern.memorystatus_vm_pressure_level"));
  sample.memoryPressurePercent =
      memoryPressurePercent(SysctlHelper::int32(calls.sysctl, "kern.memorystatus_level"), figures,
                            sample.memoryTotalBytes);
}

GPUAndANESample SystemHardwareSampler::sampleGPUAndANE(
    const std::optional<std::string>& fallbackANEHolder) const {
  GPUAndANESample sample;
  const GPUFigures gpu = readGPUFigures(calls.ioRegistry);
  sample.gpuMemoryBytes = gpu.memoryBytes;
  const std::vector<std::string> clients = readNeuralEngineClients(calls.ioRegistry);
  sample.aneHolder = fallbackANEHolder;
  if (!clients.empty()) {
    sample.anePercent = heldNeuralEnginePercent;
    sample.aneWatts = heldNeuralEngineWatts;
    sample.aneHolder = clients.back();
  }
  sample.gpuPercent = std::clamp(gpu.percent, 0.0, 100.0);
  return sample;
}

void SystemHardwareSampler::sampleDisk(SystemSample& sample, double elapsed) {
  const DiskCounters current = readDiskCounters(calls.ioRegistry);
  DiskCounters previous;
  {
    const std::scoped_lock guard(lock);
    previous.readBytes = std::exchange(previousDiskReadBytes, current.readBytes);
    previous.writeBytes = std::exchange(previousDiskWriteBytes, current.writeBytes);
  }
  sample.diskReadBytesPerSec = machineRate(previous.readBytes, current.readBytes, elapsed);
  sample.diskWriteBytesPerSec = machineRate(previous.writeBytes, current.writeBytes, elapsed);
  sampleRootVolume(sample);
}

void SystemHardwareSampler::sampleRootVolume(SystemSample& sample) const {
  const VolumeResourceValues values =
      calls.volumes.resourceValues("/").value_or(VolumeResourceValues{});
  sample.diskTotalBytes = capacity(values.totalCapacity, unknownDiskTotalBytes);
  sample.diskFreeBytes = capacity(values.availableCapacityForImportantUsage, unknownDiskFreeBytes);
}

void SystemHardwareSampler::sampleNetwork(SystemSample& sample, double elapsed) {
  const std::optional<InterfaceCounters> current = readInterfaceCounters(calls.sysctl);
  InterfaceCounters previous;
  {
    const std::scoped_lock guard(lock);
    previous = {.inBytes = previousNetInBytes, .outBytes = previousNetOutBytes};
    if (current) {
      previousNetInBytes = current->inBytes;
      previousNetOutBytes = current->outBytes;
    }
  }
  const InterfaceCounters totals = current.value_or(previous);
  sample.totalNetworkInBytes = totals.inBytes;
  sample.totalNetworkOutBytes = totals.outBytes;
  // Without new data the totals did not grow, so both rates are 0.
  sample.networkInBytesPerSec = machineRate(previous.inBytes, totals.inBytes, elapsed);
  sample.networkOutBytesPerSec = machineRate(previous.outBytes, totals.outBytes, elapsed);
}

std::optional<BatterySample> SystemHardwareSampler::sampleBattery() const {
  return readBattery(calls.power, calls.ioRegistry);
}

std::vector<SleepBlocker> SystemHardwareSampler::sampleSleepBlockers() const {
  return readSleepBlockers(calls.power);
}

std::vector<BluetoothPeripheral> SystemHardwareSampler::sampleBluetoothPeripherals() const {
  return readBluetoothPeripherals(calls.ioRegistry);
}

std::vector<MountedVolume> SystemHardwareSampler::sampleMountedVolumes() const {
  return readMountedVolumes(calls.volumes);
}

}  // namespace korvantis
