#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "samplers/ProcessEstimates.h"

namespace korvantis {
namespace {

/// The figures that the estimates come from, and the record that they make.
struct Figures {
  double cpuPercent = 0;
  double gpuPercent = 0;
  double diskReadBytesPerSec = 0;
  double diskWriteBytesPerSec = 0;
  std::uint64_t idleWakeups = 0;
};

ProcessSample estimated(const Figures& figures, const std::vector<std::uint16_t>& ports = {}) {
  ProcessSample sample;
  sample.cpuPercent = figures.cpuPercent;
  sample.gpuPercent = figures.gpuPercent;
  sample.diskReadBytesPerSec = figures.diskReadBytesPerSec;
  sample.diskWriteBytesPerSec = figures.diskWriteBytesPerSec;
  sample.idleWakeups = figures.idleWakeups;
  sample.listeningPorts = ports;
  addEstimates(sample);
  return sample;
}

TEST(ProcessEstimates, PowerComesFromCPUAndGPU) {
  EXPECT_DOUBLE_EQ(estimated({.cpuPercent = 100}).energyWatts, 8.5);
  EXPECT_DOUBLE_EQ(estimated({.gpuPercent = 100}).energyWatts, 6.5);
  EXPECT_DOUBLE_EQ(estimated({.cpuPercent = 10, .gpuPercent = 20}).energyWatts, 0.85 + 1.3);
  EXPECT_EQ(estimated({}).energyWatts, 0);
}

TEST(ProcessEstimates, TheWakeupTermTurnsOnAbove500Wakeups) {
  EXPECT_EQ(estimated({.idleWakeups = 500}).energyWatts, 0);
  EXPECT_EQ(estimated({.idleWakeups = 501}).energyWatts, 0.15);
  EXPECT_EQ(estimated({.idleWakeups = 5'000'000}).energyWatts, 0.15);
}

TEST(ProcessEstimates, NetworkIsTwoPercentOfTheDiskTraffic) {
  const ProcessSample sample = estimated(
      {.cpuPercent = 1, .diskReadBytesPerSec = 1'000'000, .diskWriteBytesPerSec = 50'000});
  EXPECT_EQ(sample.networkInBytesPerSec, 20000);
  EXPECT_EQ(sample.networkOutBytesPerSec, 1000);
}

TEST(ProcessEstimates, AQuietProcessWithoutPortsHasNoNetwork) {
  const ProcessSample sample = estimated(
      {.cpuPercent = 0.1, .diskReadBytesPerSec = 1'000'000, .diskWriteBytesPerSec = 1'000'000});
  EXPECT_EQ(sample.networkInBytesPerSec, 0);
  EXPECT_EQ(sample.networkOutBytesPerSec, 0);
}

TEST(ProcessEstimates, AProcessAt02PercentIsNotQuiet) {
  EXPECT_EQ(estimated({.cpuPercent = 0.2, .diskReadBytesPerSec = 100}).networkInBytesPerSec, 2);
  EXPECT_EQ(estimated({.cpuPercent = 0.19, .diskReadBytesPerSec = 100}).networkInBytesPerSec, 0);
}

TEST(ProcessEstimates, AnIdleProcessWithPortsHasANetworkEstimate) {
  const ProcessSample sample = estimated({.diskReadBytesPerSec = 1'000'000}, {60000});
  EXPECT_EQ(sample.networkInBytesPerSec, 20000);
}

}  // namespace
}  // namespace korvantis
