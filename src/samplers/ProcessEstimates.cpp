#include "samplers/ProcessEstimates.h"

namespace korvantis {

namespace {

constexpr double wattsPerCPUPercent = 0.085;
constexpr double wattsPerGPUPercent = 0.065;
constexpr std::uint64_t wakeupThreshold = 500;
constexpr double wakeupWatts = 0.15;
constexpr double networkShareOfDisk = 0.02;
constexpr double quietCPUPercent = 0.2;

}  // namespace

void addEstimates(ProcessSample& sample) {
  sample.energyWatts =
      sample.gpuPercent * wattsPerGPUPercent + sample.cpuPercent * wattsPerCPUPercent;
  if (sample.idleWakeups > wakeupThreshold) sample.energyWatts += wakeupWatts;

  if (sample.listeningPorts.empty() && sample.cpuPercent < quietCPUPercent) {
    sample.networkInBytesPerSec = 0;
    sample.networkOutBytesPerSec = 0;
    return;
  }
  sample.networkInBytesPerSec = sample.diskReadBytesPerSec * networkShareOfDisk;
  sample.networkOutBytesPerSec = sample.diskWriteBytesPerSec * networkShareOfDisk;
}

}  // namespace korvantis
