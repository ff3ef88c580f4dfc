#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/MachineScript.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {
namespace {

using test::MachineScript;
using test::oneInterface;
using testing::ElementsAre;
using testing::IsEmpty;

class SystemHardwareSamplerTest : public testing::Test {
 protected:
  SystemSample sampleAfter(double seconds) {
    machine.now += seconds;
    return sampler.sampleSystem(std::nullopt);
  }

  void TearDown() override {
    EXPECT_THAT(machine.complaints(), IsEmpty());
    EXPECT_EQ(machine.repliesNotGivenBack(), 0U);
  }

  MachineScript machine;
  SystemHardwareSampler sampler{machine.platform()};
};

TEST_F(SystemHardwareSamplerTest, AsksInOneFixedOrder) {
  machine.interfaceList = oneInterface(1, 1);
  sampler.sampleSystem(std::nullopt);
  EXPECT_THAT(machine.operations(),
              ElementsAre("now", "host_processor_info", "getloadavg", "physicalMemory",
                          "host_statistics64", "host_page_size", "sysctlbyname vm.swapusage",
                          "sysctlbyname kern.memorystatus_vm_pressure_level",
                          "sysctlbyname kern.memorystatus_level", "match IOAccelerator",
                          "match AppleH11ANEInterface", "match ANEDriverRoot",
                          "match IOBlockStorageDriver", "resourceValues /", "sysctl size",
                          "sysctl list", "powerSources", "match AppleSmartBattery"));
}

TEST_F(SystemHardwareSamplerTest, TheSampleBearsTheTimeOfItsBeginning) {
  machine.now = 1234.5;
  EXPECT_EQ(sampler.sampleSystem(std::nullopt).timestamp, Instant{1234.5});
}

TEST_F(SystemHardwareSamplerTest, FirstSampleHasTwelvePercentOnEveryCoreAndNoRates) {
  machine.cores = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}};
  machine.setDisk(5000, 6000);
  machine.interfaceList = oneInterface(7000, 8000);
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_THAT(sample.perCoreCPUPercent, ElementsAre(12.0, 12.0, 12.0));
  EXPECT_EQ(sample.cpuPercent, 12.0);
  EXPECT_EQ(sample.cpuUserPercent, 8.0);
  EXPECT_EQ(sample.cpuSystemPercent, 4.0);
  EXPECT_EQ(sample.diskReadBytesPerSec, 0);
  EXPECT_EQ(sample.diskWriteBytesPerSec, 0);
  EXPECT_EQ(sample.networkInBytesPerSec, 0);
  EXPECT_EQ(sample.networkOutBytesPerSec, 0);
  EXPECT_EQ(sample.totalNetworkInBytes, 7000U);
  EXPECT_EQ(sample.totalNetworkOutBytes, 8000U);
}

TEST_F(SystemHardwareSamplerTest, NoCPUTicksInBetweenGiveZeroOnAllCPUFigures) {
  machine.cores = {{1, 2, 3, 4}, {5, 6, 7, 8}};
  sampler.sampleSystem(std::nullopt);
  const SystemSample sample = sampleAfter(2);
  EXPECT_THAT(sample.perCoreCPUPercent, ElementsAre(0.0, 0.0));
  EXPECT_EQ(sample.cpuPercent, 0);
  EXPECT_EQ(sample.cpuUserPercent, 0);
  EXPECT_EQ(sample.cpuSystemPercent, 0);
}

TEST_F(SystemHardwareSamplerTest, CPUIsMeasuredBetweenTwoSamples) {
  machine.cores = {{100, 100, 100, 100}};
  sampler.sampleSystem(std::nullopt);
  machine.cores = {{120, 110, 160, 110}};
  const SystemSample sample = sampleAfter(2);
  EXPECT_THAT(sample.perCoreCPUPercent, ElementsAre(40.0));
  EXPECT_DOUBLE_EQ(sample.cpuUserPercent, 30.0);
  EXPECT_DOUBLE_EQ(sample.cpuSystemPercent, 10.0);
  EXPECT_DOUBLE_EQ(sample.cpuPercent, 40.0);
}

TEST_F(SystemHardwareSamplerTest, CPUIgnoresTheTimeBetweenSamples) {
  machine.cores = {{0, 0, 0, 0}};
  sampler.sampleSystem(std::nullopt);
  machine.cores = {{1, 0, 1, 0}};
  EXPECT_DOUBLE_EQ(sampleAfter(0.001).cpuPercent, 50.0);
}

TEST_F(SystemHardwareSamplerTest, CoresThatComeAndGoGiveOneMoreTickOfPlaceholders) {
  machine.cores = {{1, 1, 1, 1}, {1, 1, 1, 1}};
  sampler.sampleSystem(std::nullopt);
  machine.cores = {{9, 1, 1, 1}};
  EXPECT_THAT(sampleAfter(2).perCoreCPUPercent, ElementsAre(12.0));
  machine.cores = {{10, 1, 4, 1}};
  EXPECT_THAT(sampleAfter(2).perCoreCPUPercent, ElementsAre(25.0));
  machine.cores = {{10, 1, 4, 1}, {1, 1, 1, 1}};
  EXPECT_THAT(sampleAfter(2).perCoreCPUPercent, ElementsAre(12.0, 12.0));
}

TEST_F(SystemHardwareSamplerTest, NegativeTicksCountAsZero) {
  machine.cores = {{-5, -5, -5, -5}};
  sampler.sampleSystem(std::nullopt);
  machine.cores = {{10, -1, 30, -7}};
  EXPECT_THAT(sampleAfter(2).perCoreCPUPercent, ElementsAre(25.0));
}

class SystemHardwareSamplerCPUFailure : public SystemHardwareSamplerTest {
 protected:
  void expectCannedAnswer() {
    const SystemSample sample = sampleAfter(2);
    EXPECT_THAT(sample.perCoreCPUPercent, ElementsAre(10.0, 8.0, 6.0, 8.0));
    EXPECT_EQ(sample.cpuPercent, 8.0);
    EXPECT_EQ(sample.cpuUserPercent, 5.0);
    EXPECT_EQ(sample.cpuSystemPercent, 3.0);
  }
};

TEST_F(SystemHardwareSamplerCPUFailure, AFailedCallGivesTheCannedAnswer) {
  machine.processorInfoResult = 5;
  machine.processorInfoGivesReply = false;
  expectCannedAnswer();
}

TEST_F(SystemHardwareSamplerCPUFailure, AFailedCallWithAReplyGivesItBackAllTheSame) {
  machine.processorInfoResult = 5;
  expectCannedAnswer();
}

TEST_F(SystemHardwareSamplerCPUFailure, NoDataGivesTheCannedAnswer) {
  machine.processorInfoGivesReply = false;
  expectCannedAnswer();
}

TEST_F(SystemHardwareSamplerCPUFailure, ZeroProcessorsGiveTheCannedAnswer) {
  machine.cores = {};
  expectCannedAnswer();
  machine.cores = {{1, 1, 1, 1}};
  machine.processorInfoCores = 0;
  expectCannedAnswer();
}

TEST_F(SystemHardwareSamplerCPUFailure, AReplyTooShortForItsCoresGivesTheCannedAnswer) {
  machine.processorInfoWords = 3;
  expectCannedAnswer();
}

TEST_F(SystemHardwareSamplerCPUFailure, TheStoredTicksSurviveAFailure) {
  machine.cores = {{0, 0, 0, 0}};
  sampler.sampleSystem(std::nullopt);
  machine.processorInfoResult = 5;
  expectCannedAnswer();
  machine.processorInfoResult = 0;
  machine.cores = {{10, 0, 10, 0}};
  EXPECT_DOUBLE_EQ(sampleAfter(2).cpuPercent, 50.0);
}

TEST_F(SystemHardwareSamplerTest, LoadAveragesAreThoseOfTheSystem) {
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_EQ(sample.loadAverage1m, 1.5);
  EXPECT_EQ(sample.loadAverage5m, 2.5);
  EXPECT_EQ(sample.loadAverage15m, 3.5);
}

TEST_F(SystemHardwareSamplerTest, LoadAveragesThatFailAreZero) {
  machine.loadAverages = std::nullopt;
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_EQ(sample.loadAverage1m, 0);
  EXPECT_EQ(sample.loadAverage5m, 0);
  EXPECT_EQ(sample.loadAverage15m, 0);
}

TEST_F(SystemHardwareSamplerTest, MemoryFiguresComeFromThePageCounters) {
  machine.pageCounters.internal_page_count = 1000;
  machine.pageCounters.purgeable_count = 100;
  machine.pageCounters.wire_count = 50;
  machine.pageCounters.compressor_page_count = 30;
  machine.pageCounters.external_page_count = 400;
  machine.pageSize = 4096;
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_EQ(sample.memoryTotalBytes, std::uint64_t{16} << 30);
  EXPECT_EQ(sample.memoryAppBytes, 900U * 4096);
  EXPECT_EQ(sample.memoryWiredBytes, 50U * 4096);
  EXPECT_EQ(sample.memoryCompressedBytes, 30U * 4096);
  EXPECT_EQ(sample.memoryCachedBytes, 500U * 4096);
  EXPECT_EQ(sample.memoryUsedBytes, 980U * 4096);
}

TEST_F(SystemHardwareSamplerTest, APageIsTakenAs16384BytesWhereItsSizeCannotBeHad) {
  machine.pageSize = std::nullopt;
  machine.pageCounters.wire_count = 3;
  EXPECT_EQ(sampler.sampleSystem(std::nullopt).memoryWiredBytes, 3U * 16384);
}

TEST_F(SystemHardwareSamplerTest, WithoutPageCountersSharesOfInstalledMemoryStand) {
  machine.physicalMemory = 1000;
  machine.statisticsResult = -1;
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_EQ(sample.memoryUsedBytes, 500U);
  EXPECT_EQ(sample.memoryAppBytes, 333U);
  EXPECT_EQ(sample.memoryWiredBytes, 100U);
  EXPECT_EQ(sample.memoryCompressedBytes, 66U);
  EXPECT_EQ(sample.memoryCachedBytes, 0U);
  // The pressure's fallback stands on these figures too.
  EXPECT_DOUBLE_EQ(sample.memoryPressurePercent, 16.6);
  EXPECT_EQ(machine.count("host_page_size"), 1);
}

TEST_F(SystemHardwareSamplerTest, SwapIsWhatTheSystemUsesOfItAndZeroOnFailure) {
  EXPECT_EQ(sampler.sampleSystem(std::nullopt).swapUsedBytes, 0U);
  machine.setSwapUsed(12345);
  EXPECT_EQ(sampleAfter(2).swapUsedBytes, 12345U);
}

TEST_F(SystemHardwareSamplerTest, PressureComesFromTheTwoFiguresOfTheKernel) {
  machine.setFigure("kern.memorystatus_vm_pressure_level", std::int32_t{3});
  machine.setFigure("kern.memorystatus_level", std::int32_t{70});
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_EQ(sample.memoryPressure, MemoryPressureLevel::warning);
  EXPECT_EQ(sample.memoryPressurePercent, 30.0);
}

TEST_F(SystemHardwareSamplerTest, WithoutTheKernelsFiguresPressureIsNormal) {
  machine.physicalMemory = 1000 * 16384;
  machine.pageCounters.wire_count = 200;
  machine.pageCounters.compressor_page_count = 50;
  const SystemSample sample = sampler.sampleSystem(std::nullopt);
  EXPECT_EQ(sample.memoryPressure, MemoryPressureLevel::normal);
  EXPECT_DOUBLE_EQ(sample.memoryPressurePercent, 25.0);
}

TEST_F(SystemHardwareSamplerTest, TheNeuralEngineNamesTheTopProcessWhereTheSystemNamesNone) {
  EXPECT_EQ(sampler.sampleSystem("Editor").neuralEngineHolder, "Editor");
  EXPECT_EQ(sampler.sampleSystem(std::nullopt).neuralEngineHolder, std::nullopt);
}

}  // namespace
}  // namespace korvantis
