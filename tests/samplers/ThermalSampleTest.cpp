#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/AppleSMCReader.h"
#include "samplers/SMCScript.h"
#include "samplers/ThermalSensors.h"

namespace korvantis {
namespace {

using test::SMCScript;
using testing::ElementsAre;
using testing::IsEmpty;

class ThermalFigures : public testing::Test {
 protected:
  void TearDown() override { EXPECT_THAT(controller.complaints(), IsEmpty()); }

  ThermalSample sample(double cpuLoad = 0, double gpuLoad = 0) {
    return reader().sampleThermal(cpuLoad, gpuLoad);
  }
  AppleSMCReader reader() {
    return AppleSMCReader(controller.calls(), [this] { return state; });
  }
  std::vector<std::string> sensorNames() {
    std::vector<std::string> names;
    for (const SensorItem& sensor : sample().sensors) names.push_back(sensor.name);
    return names;
  }

  SMCScript controller;
  std::int64_t state = 0;
};

TEST_F(ThermalFigures, WithoutAControllerAndLoadAllIsEstimated) {
  controller.hasService = false;
  const ThermalSample figures = sample();
  EXPECT_EQ(figures.cpuCelsius, 40.8);
  EXPECT_EQ(figures.gpuCelsius, 39.0);
  EXPECT_EQ(figures.hottestCelsius, 42.9);
  EXPECT_EQ(figures.hottestSensorName, "CPU Performance Core 1");
  EXPECT_EQ(figures.systemPowerWatts, 4.8);
  EXPECT_THAT(figures.sensors, ElementsAre(SensorItem{"CPU Performance Core 1", "CPU", 42.9},
                                           SensorItem{"CPU Performance Core 2", "CPU", 42.1},
                                           SensorItem{"CPU Efficiency Core 1", "CPU", 37.3},
                                           SensorItem{"GPU Shader Cluster", "GPU", 39.0},
                                           SensorItem{"ANE Matrix Controller", "System", 38.5},
                                           SensorItem{"NVMe Storage Controller", "Storage", 36.8},
                                           SensorItem{"Battery Pack Sensor", "Battery", 31.4}));
}

TEST_F(ThermalFigures, EstimatesFollowTheLoads) {
  const ThermalSample figures = sample(50, 80);
  // 50 * 0.28 + 41.5 = 55.5 and 80 * 0.24 + 39 = 58.2
  EXPECT_EQ(figures.sensors[0].celsius, 56.9);
  EXPECT_EQ(figures.sensors[1].celsius, 56.1);
  EXPECT_EQ(figures.sensors[2].celsius, 51.3);
  EXPECT_EQ(figures.sensors[3].celsius, 58.2);
  EXPECT_EQ(figures.sensors[4].celsius, 52.5);
  EXPECT_EQ(figures.cpuCelsius, 54.8);
  EXPECT_EQ(figures.gpuCelsius, 58.2);
  EXPECT_EQ(figures.hottestSensorName, "GPU Shader Cluster");
  // 50 * 0.22 + 4.8 + 80 * 0.18
  EXPECT_EQ(figures.systemPowerWatts, 30.2);
}

TEST_F(ThermalFigures, EverySensorKeyHasItsNameGroupAndPlace) {
  float celsius = 20;
  for (const char* key :
       {"TW0P", "TB0T", "TH0x", "Tg0D", "Tg05", "TC0P", "Tf04", "Te05", "Tp09", "Tp05", "Tp01"}) {
    controller.setFloat(key, celsius++);
  }
  EXPECT_THAT(sample().sensors, ElementsAre(SensorItem{"CPU Performance Core 1", "CPU", 30},
                                            SensorItem{"CPU Performance Core 2", "CPU", 29},
                                            SensorItem{"CPU Performance Core 3", "CPU", 28},
                                            SensorItem{"CPU Efficiency Core 1", "CPU", 27},
                                            SensorItem{"CPU Efficiency Core 2", "CPU", 26},
                                            SensorItem{"CPU Proximity", "CPU", 25},
                                            SensorItem{"GPU Cluster 1", "GPU", 24},
                                            SensorItem{"GPU Cluster 2", "GPU", 23},
                                            SensorItem{"NVMe SSD Controller", "Storage", 22},
                                            SensorItem{"Battery Die Sensor", "Battery", 21},
                                            SensorItem{"Wi-Fi / Airport Module", "System", 20}));
}

TEST_F(ThermalFigures, AReadingOf10Or125IsDroppedAndOneJustInsideIsKept) {
  controller.setFloat("Tp01", 10.0F);
  controller.setFloat("Tp05", 10.1F);
  controller.setFloat("Tp09", 124.9F);
  controller.setFloat("Te05", 125.0F);
  EXPECT_THAT(sample().sensors, ElementsAre(SensorItem{"CPU Performance Core 2", "CPU", 10.1},
                                            SensorItem{"CPU Performance Core 3", "CPU", 124.9}));
}

TEST_F(ThermalFigures, SensorsAreRoundedToOneDecimalHalfAwayFromZero) {
  controller.setFloat("Tp01", 42.25F);
  controller.setFloat("Tp05", 42.125F);
  EXPECT_EQ(sample().sensors[0].celsius, 42.3);
  EXPECT_EQ(sample().sensors[1].celsius, 42.1);
}

TEST_F(ThermalFigures, WithoutAGPUSensorItIsTwoAndAHalfDegreesBelowTheCPU) {
  controller.setFloat("TC0P", 60);
  EXPECT_EQ(sample().cpuCelsius, 60.0);
  EXPECT_EQ(sample().gpuCelsius, 57.5);
}

TEST_F(ThermalFigures, WithoutACPUSensorTheCPUIsAtZero) {
  controller.setFloat("TH0x", 45);
  EXPECT_EQ(sample().cpuCelsius, 0);
  EXPECT_EQ(sample().gpuCelsius, -2.5);
  EXPECT_EQ(sample().hottestCelsius, 45.0);
  EXPECT_EQ(sample().hottestSensorName, "NVMe SSD Controller");
}

TEST_F(ThermalFigures, ATieForHottestKeepsTheEarlierSensor) {
  controller.setFloat("Tp05", 70);
  controller.setFloat("Tg05", 70);
  controller.setFloat("Te05", 40);
  EXPECT_EQ(sample().hottestSensorName, "CPU Performance Core 2");
}

TEST_F(ThermalFigures, PowerOfHalfAWattOr240IsReplacedByTheEstimate) {
  for (const float watts : {0.5F, 240.0F, -3.0F}) {
    controller.setFloat("PSTR", watts);
    EXPECT_EQ(sample().systemPowerWatts, 4.8) << watts;
  }
  controller.setFloat("PSTR", 0.625F);
  EXPECT_EQ(sample().systemPowerWatts, 0.6);
  controller.setFloat("PSTR", 239.9F);
  EXPECT_EQ(sample().systemPowerWatts, 239.9);
}

TEST_F(ThermalFigures, OneFanIsTheSystemFan) {
  controller.setByte("FNum", 1);
  controller.keys["F0Ac"] = {"fpe2", 2, {0x12, 0xC0}};
  controller.setFloat("F0Mn", 1000);
  controller.setFloat("F0Mx", 4800);
  EXPECT_THAT(sample().fans,
              ElementsAre(FanReading{0, "System Fan", 1200, 1000, 4800, false, std::nullopt}));
}

TEST_F(ThermalFigures, SixFansGiveFourAndAllButTheFirstAreRight) {
  controller.setByte("FNum", 6);
  controller.setFloat("F3Ac", 2222);
  const auto fans = sample().fans;
  EXPECT_THAT(fans, ElementsAre(FanReading{0, "Left Fan", 0, 1200, 5800, false, std::nullopt},
                                FanReading{1, "Right Fan", 0, 1200, 5800, false, std::nullopt},
                                FanReading{2, "Right Fan", 0, 1200, 5800, false, std::nullopt},
                                FanReading{3, "Right Fan", 2222, 1200, 5800, false, std::nullopt}));
}

TEST_F(ThermalFigures, ATargetStandsForTheSpeedOfARealFan) {
  controller.setByte("FNum", 2);
  controller.setFloat("F1Ac", 2222);
  AppleSMCReader fanReader(controller.calls(), [] { return std::int64_t{0}; });
  fanReader.setFanTarget(1, 3000.0);
  EXPECT_EQ(fanReader.sampleThermal(0, 0).fans[1],
            (FanReading{1, "Right Fan", 3000, 1200, 5800, true, 3000}));
  fanReader.setFanTarget(1, std::nullopt);
  EXPECT_EQ(fanReader.sampleThermal(0, 0).fans[1],
            (FanReading{1, "Right Fan", 2222, 1200, 5800, false, std::nullopt}));
}

TEST_F(ThermalFigures, MadeUpFansFollowTheTemperature) {
  const auto speedAt = [this](float celsius) {
    controller.setFloat("TC0P", celsius);
    return sample().fans[0].currentRPM;
  };
  EXPECT_EQ(speedAt(61), 0);
  EXPECT_EQ(speedAt(62), 0);
  EXPECT_EQ(speedAt(63), 3 * 95 + 1400);
  EXPECT_EQ(speedAt(100), 5200);
  EXPECT_EQ(speedAt(110), 5400);
  EXPECT_THAT(sample().fans,
              ElementsAre(FanReading{0, "Left Fan", 5400, 1200, 5800, false, std::nullopt},
                          FanReading{1, "Right Fan", 5400, 1200, 5800, false, std::nullopt}));
}

TEST_F(ThermalFigures, MadeUpFansTakeTargetsToo) {
  AppleSMCReader fanReader(controller.calls(), [] { return std::int64_t{0}; });
  fanReader.setFanTarget(0, 2500.0);
  fanReader.setFanTarget(5, 2600.0);
  EXPECT_THAT(fanReader.sampleThermal(0, 0).fans,
              ElementsAre(FanReading{0, "Left Fan", 2500, 1200, 5800, true, 2500},
                          FanReading{1, "Right Fan", 0, 1200, 5800, false, std::nullopt}));
}

TEST_F(ThermalFigures, AFanCountIsCutTowardZeroAndStrangeOnesDoNotMatter) {
  controller.setFloat("FNum", 1.9F);
  EXPECT_EQ(sample().fans.size(), 1U);
  controller.setFloat("FNum", 0.9F);
  EXPECT_EQ(sample().fans.size(), 2U);
  controller.setFloat("FNum", -3e38F);
  EXPECT_EQ(sample().fans.size(), 2U);
  controller.setFloat("FNum", 3e38F);
  EXPECT_EQ(sample().fans.size(), 4U);
}

TEST_F(ThermalFigures, TheStateOfTheSystemIsAnyOfThreeOrZero) {
  for (const std::int64_t known : {1, 2, 3}) {
    state = known;
    EXPECT_EQ(sample().thermalStateLevel, known);
  }
  for (const std::int64_t unknown : {-1, 0, 4, 7}) {
    state = unknown;
    EXPECT_EQ(sample().thermalStateLevel, 0) << unknown;
  }
}

}  // namespace
}  // namespace korvantis
