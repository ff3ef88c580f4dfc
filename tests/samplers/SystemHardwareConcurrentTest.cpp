#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "samplers/MachineScript.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {
namespace {

using test::MachineScript;

TEST(SystemHardwareSamplerConcurrent, OverlappingSamplesOfOneSamplerStayWhole) {
  MachineScript machine;
  machine.cores = {{1, 1, 1, 1}, {1, 1, 1, 1}};
  machine.setDisk(1000, 1000);
  machine.interfaceList = test::oneInterface(500, 600);
  SystemHardwareSampler sampler(machine.platform());
  sampler.sampleSystem(std::nullopt);
  std::atomic<int> wrong = 0;
  const auto work = [&] {
    for (int round = 0; round < 200; ++round) {
      const SystemSample sample = sampler.sampleSystem("Editor");
      if (sample.perCoreCPUPercent.size() != 2 || sample.totalNetworkInBytes != 500 ||
          sample.diskReadBytesPerSec != 0 || sampler.readHardwareInfo().logicalCores != 8) {
        ++wrong;
      }
    }
  };
  std::thread other(work);
  work();
  other.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(machine.repliesNotGivenBack(), 0U);
  EXPECT_THAT(machine.complaints(), testing::IsEmpty());
}

TEST(SystemHardwareSamplerConcurrent, SamplesOfTheRealMachineMayOverlap) {
  SystemHardwareSampler sampler(systemPlatformCalls());
  std::atomic<int> wrong = 0;
  const auto work = [&] {
    for (int round = 0; round < 50; ++round) {
      const SystemSample sample = sampler.sampleSystem(std::nullopt);
      if (sample.memoryTotalBytes == 0 || sample.memoryUsedBytes == 0 ||
          sample.perCoreCPUPercent.empty() || sample.diskTotalBytes == 0) {
        ++wrong;
      }
    }
  };
  std::thread other(work);
  work();
  other.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace korvantis
