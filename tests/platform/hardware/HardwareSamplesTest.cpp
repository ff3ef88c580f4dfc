#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/hardware/HardwareTree.h"
#include "samplers/AppleSMCReader.h"
#include "samplers/SystemHardwareSampler.h"

namespace korvantis {
namespace {

using test::HardwareTree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// What the samplers make of a machine on file: the shapes meet in the middle.
class HardwareSamples : public testing::Test {
 protected:
  explicit HardwareSamples(const std::string& machine) : tree(machine) {}

  std::vector<std::string> sensors() {
    std::vector<std::string> names;
    for (const SensorItem& sensor : reader.sampleThermal(0, 0).sensors) {
      names.push_back(sensor.name);
    }
    return names;
  }

  HardwareTree tree;
  AppleSMCReader reader{tree.controller, tree.calls.processInfo.thermalState};
  SystemHardwareSampler sampler{tree.calls, reader};
};

class IntelLaptop : public HardwareSamples {
 protected:
  IntelLaptop() : HardwareSamples("intel-laptop") {}
};

TEST_F(IntelLaptop, BatteryIsThatOfItsPack) {
  const auto battery = sampler.sampleBattery();
  ASSERT_TRUE(battery);
  EXPECT_DOUBLE_EQ(battery->percentage, 60);
  EXPECT_TRUE(battery->isCharging);
  EXPECT_TRUE(battery->isPluggedIn);
  EXPECT_EQ(battery->timeRemainingMinutes, 60);
  EXPECT_DOUBLE_EQ(battery->watts, 20);
  EXPECT_DOUBLE_EQ(battery->healthPercent, 87.7);
  EXPECT_EQ(battery->cycleCount, 212);
  EXPECT_DOUBLE_EQ(battery->temperatureCelsius, 31.2) << "it does not tell";
}

TEST_F(IntelLaptop, ThermalSampleIsMeasured) {
  const ThermalSample sample = reader.sampleThermal(0, 0);
  EXPECT_THAT(sensors(),
              ElementsAre("CPU Performance Core 1", "CPU Performance Core 2",
                          "CPU Efficiency Core 1", "CPU Efficiency Core 2", "CPU Proximity",
                          "NVMe SSD Controller", "Wi-Fi / Airport Module"));
  EXPECT_DOUBLE_EQ(sample.cpuCelsius, 56.6);
  EXPECT_EQ(sample.hottestSensorName, "CPU Proximity");
  ASSERT_EQ(sample.fans.size(), 2U);
  EXPECT_DOUBLE_EQ(sample.fans[0].currentRPM, 2510);
  EXPECT_DOUBLE_EQ(sample.fans[1].maxRPM, 6100);
  EXPECT_EQ(sample.thermalStateLevel, 0);
}

TEST_F(IntelLaptop, GraphicsTimeIsThatOfItsClients) {
  EXPECT_THAT(sampler.readPerPIDGPUTime(),
              testing::UnorderedElementsAre(Pair(1200, 1'200'000'000U), Pair(1300, 500'000'000U)));
}

TEST_F(IntelLaptop, VolumesAreItsDiskStickAndServers) {
  std::vector<std::string> names;
  for (const MountedVolume& volume : sampler.sampleMountedVolumes()) names.push_back(volume.name);
  // The servers' volumes answer in their own time.
  ASSERT_GE(names.size(), 2U);
  EXPECT_EQ(names[0], "root");
  EXPECT_EQ(names[1], "Data Stick");
}

class AmdLaptop : public HardwareSamples {
 protected:
  AmdLaptop() : HardwareSamples("amd-laptop") {}
};

TEST_F(AmdLaptop, BatteriesCountTogether) {
  const auto battery = sampler.sampleBattery();
  ASSERT_TRUE(battery);
  EXPECT_DOUBLE_EQ(battery->percentage, 70);
  EXPECT_FALSE(battery->isCharging);
  EXPECT_FALSE(battery->isPluggedIn);
  EXPECT_EQ(battery->timeRemainingMinutes, 140);
  EXPECT_DOUBLE_EQ(battery->watts, 18);
  EXPECT_DOUBLE_EQ(battery->healthPercent, 83.3);
  EXPECT_EQ(battery->cycleCount, 34);
  EXPECT_DOUBLE_EQ(battery->temperatureCelsius, 31.2) << "measured, and the same by chance";
}

TEST_F(AmdLaptop, ThermalSampleIsMeasured) {
  const ThermalSample sample = reader.sampleThermal(0, 0);
  EXPECT_DOUBLE_EQ(sample.gpuCelsius, 59);
  EXPECT_DOUBLE_EQ(sample.systemPowerWatts, 18);
  ASSERT_EQ(sample.fans.size(), 1U);
  EXPECT_EQ(sample.fans[0].name, "System Fan");
  EXPECT_EQ(sample.thermalStateLevel, 1);
}

class VirtualMachine : public HardwareSamples {
 protected:
  VirtualMachine() : HardwareSamples("virtual-machine") {}
};

TEST_F(VirtualMachine, PlaceholdersStandInForAllOfIt) {
  const auto battery = sampler.sampleBattery();
  ASSERT_TRUE(battery);
  EXPECT_DOUBLE_EQ(battery->percentage, 100);
  EXPECT_TRUE(battery->isPluggedIn);
  EXPECT_DOUBLE_EQ(battery->healthPercent, 98);
  EXPECT_EQ(battery->cycleCount, 48);
  const ThermalSample sample = reader.sampleThermal(0, 0);
  EXPECT_DOUBLE_EQ(sample.cpuCelsius, 40.8);
  EXPECT_EQ(sample.fans.size(), 2U);
  EXPECT_THAT(sampler.readPerPIDGPUTime(), IsEmpty());
  EXPECT_THAT(sampler.sampleSleepBlockers(), IsEmpty());
  EXPECT_THAT(sampler.sampleBluetoothPeripherals(), IsEmpty());
  const auto volumes = sampler.sampleMountedVolumes();
  ASSERT_EQ(volumes.size(), 1U);
  EXPECT_EQ(volumes[0].path, "/");
  EXPECT_TRUE(volumes[0].isInternal);
}

class BareContainer : public HardwareSamples {
 protected:
  BareContainer() : HardwareSamples("bare-container") {}
};

TEST_F(BareContainer, PlaceholdersStandInForAllOfIt) {
  EXPECT_EQ(sampler.sampleBattery()->cycleCount, 48);
  EXPECT_DOUBLE_EQ(reader.sampleThermal(0, 0).cpuCelsius, 40.8);
  EXPECT_THAT(sampler.readPerPIDGPUTime(), IsEmpty());
  const auto volumes = sampler.sampleMountedVolumes();
  ASSERT_EQ(volumes.size(), 1U);
  EXPECT_TRUE(volumes[0].isInternal) << "its device is unknown, but it is the root";
}

}  // namespace
}  // namespace korvantis
