#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/MachineScript.h"
#include "samplers/RegistryScript.h"
#include "samplers/SMCScript.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {
namespace {

using test::clientOf;
using test::MachineScript;
using test::RegistryScript;
using test::SMCScript;
using test::whole;

/// A sampler whose registry and controller are scripted too.
class HardwareSample : public testing::Test {
 protected:
  SystemSample sample(const std::optional<std::string>& topProcess = std::nullopt) {
    PlatformCalls platform = machine.platform();
    platform.ioRegistry = registry.calls();
    AppleSMCReader thermal(controller.calls(), [] { return std::int64_t{2}; });
    return SystemHardwareSampler(platform, thermal).sampleSystem(topProcess);
  }

  void setUtilization(std::int64_t percent) {
    registry.services["IOAccelerator"] = {
        {PropertyMap{{"PerformanceStatistics",
                      PropertyValue{PropertyMap{{"Device Utilization %", whole(percent)},
                                                {"In use system memory", whole(4096)}}}}}}};
  }

  MachineScript machine;
  RegistryScript registry;
  SMCScript controller;
};

TEST_F(HardwareSample, AGPUUtilizationOf140Gives100) {
  setUtilization(140);
  EXPECT_EQ(sample().gpuPercent, 100.0);
  EXPECT_EQ(sample().gpuMemoryBytes, 4096U);
}

TEST_F(HardwareSample, ANegativeGPUUtilizationGivesZero) {
  setUtilization(-3);
  EXPECT_EQ(sample().gpuPercent, 0.0);
}

TEST_F(HardwareSample, OneNeuralEngineClientHoldsIt) {
  registry.services["AppleH11ANEInterface"] = {
      {PropertyMap(), {clientOf("pid 99, mediaanalysisd")}}};
  const SystemSample figures = sample("Xcode");
  EXPECT_EQ(figures.neuralEnginePercent, 18.5);
  EXPECT_EQ(figures.neuralEngineWatts, 1.4);
  EXPECT_EQ(figures.neuralEngineHolder, "mediaanalysisd");
}

TEST_F(HardwareSample, TheLastNeuralEngineClientWinsAndTheFiguresDoNotAddUp) {
  registry.services["AppleH11ANEInterface"] = {{PropertyMap(), {clientOf("pid 1, a")}}};
  registry.services["ANEDriverRoot"] = {{PropertyMap(), {clientOf("pid 2, b"), clientOf("c")}}};
  const SystemSample figures = sample();
  EXPECT_EQ(figures.neuralEngineHolder, "b");
  EXPECT_EQ(figures.neuralEnginePercent, 18.5);
  EXPECT_EQ(figures.neuralEngineWatts, 1.4);
}

TEST_F(HardwareSample, WithoutANeuralEngineClientTheTopProcessIsNamedBesideZero) {
  const SystemSample figures = sample("Xcode");
  EXPECT_EQ(figures.neuralEnginePercent, 0);
  EXPECT_EQ(figures.neuralEngineWatts, 0);
  EXPECT_EQ(figures.neuralEngineHolder, "Xcode");
}

TEST_F(HardwareSample, WithoutANeuralEngineClientAndATopProcessTheHolderIsAbsent) {
  EXPECT_EQ(sample().neuralEngineHolder, std::nullopt);
}

TEST_F(HardwareSample, TemperaturesFollowTheLoadsOfTheSameSample) {
  setUtilization(50);
  // The first sample of a machine says 12 percent on every core.
  const SystemSample figures = sample();
  EXPECT_EQ(figures.cpuPercent, 12.0);
  EXPECT_EQ(figures.thermal.gpuCelsius, 51.0);
  EXPECT_EQ(figures.thermal.systemPowerWatts, 16.4);
  EXPECT_EQ(figures.thermal.thermalStateLevel, 2);
}

TEST_F(HardwareSample, TheBatteryIsInEverySample) {
  ASSERT_TRUE(sample().battery.has_value());
  EXPECT_EQ(sample().battery->cycleCount, 48);
}

}  // namespace
}  // namespace korvantis
