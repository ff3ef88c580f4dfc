#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/InsightFixtures.h"
#include "analysis/StrainRules.h"

namespace korvantis {
namespace {

using StrainRules::activeStrains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double hotCelsius = 82;

/// What is under strain on a quiet machine with one change.
template <typename Change>
std::vector<StrainKind> strainsWith(const Change& change) {
  SystemSample system;
  change(system);
  return activeStrains(system, hotCelsius);
}

/// A machine on its battery.
BatterySample& drainedBattery(SystemSample& system) {
  BatterySample& battery = system.battery.emplace();
  battery.isPluggedIn = false;
  battery.watts = 22;
  return battery;
}

TEST(StrainRules, AQuietMachineIsUnderNone) {
  EXPECT_THAT(activeStrains(SystemSample{}, hotCelsius), IsEmpty());
}

TEST(StrainRules, CPUFrom75Percent) {
  EXPECT_THAT(strainsWith([](auto& system) { system.cpuPercent = 74.9; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { system.cpuPercent = 75; }),
              ElementsAre(StrainKind::cpu));
}

TEST(StrainRules, MemoryFrom70PercentOfPressureOrAnyLevelButNormal) {
  EXPECT_THAT(strainsWith([](auto& system) { system.memoryPressurePercent = 69.9; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { system.memoryPressurePercent = 70; }),
              ElementsAre(StrainKind::memory));
  for (const auto level : {MemoryPressureLevel::warning, MemoryPressureLevel::critical}) {
    EXPECT_THAT(strainsWith([level](auto& system) { system.memoryPressure = level; }),
                ElementsAre(StrainKind::memory));
  }
}

TEST(StrainRules, SwapIsNoStrain) {
  EXPECT_THAT(strainsWith([](auto& system) { system.swapUsedBytes = 64 * GiB; }), IsEmpty());
}

TEST(StrainRules, GPUFrom75Percent) {
  EXPECT_THAT(strainsWith([](auto& system) { system.gpuPercent = 74.9; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { system.gpuPercent = 75; }),
              ElementsAre(StrainKind::gpu));
}

TEST(StrainRules, NeuralEngineFrom40PercentAlsoWithoutAHolder) {
  EXPECT_THAT(strainsWith([](auto& system) { system.neuralEnginePercent = 39.9; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { system.neuralEnginePercent = 40; }),
              ElementsAre(StrainKind::neuralEngine));
}

TEST(StrainRules, TemperatureFromTheHeatLimitOrThermalState2) {
  EXPECT_THAT(strainsWith([](auto& system) { system.thermal.hottestCelsius = 81.9; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { system.thermal.hottestCelsius = 82; }),
              ElementsAre(StrainKind::temperature));
  EXPECT_THAT(strainsWith([](auto& system) { system.thermal.thermalStateLevel = 1; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { system.thermal.thermalStateLevel = 2; }),
              ElementsAre(StrainKind::temperature));
}

TEST(StrainRules, DiskFrom120MiBPerSecondInBothDirectionsTogether) {
  const auto disk = [](double read, double written) {
    return strainsWith([=](auto& system) {
      system.diskReadBytesPerSec = read;
      system.diskWriteBytesPerSec = written;
    });
  };
  EXPECT_THAT(disk(125'829'120 - 1000, 999), IsEmpty());
  EXPECT_THAT(disk(125'829'120 - 1000, 1000), ElementsAre(StrainKind::disk));
  EXPECT_THAT(disk(125'829'120, 0), ElementsAre(StrainKind::disk));
  EXPECT_THAT(disk(0, 125'829'120), ElementsAre(StrainKind::disk));
}

TEST(StrainRules, NetworkIsNoStrain) {
  EXPECT_THAT(strainsWith([](auto& system) { system.networkInBytesPerSec = 1e12; }), IsEmpty());
}

TEST(StrainRules, BatteryFrom22WattsWhileUnplugged) {
  EXPECT_THAT(strainsWith([](auto& system) { drainedBattery(system); }),
              ElementsAre(StrainKind::battery));
  EXPECT_THAT(strainsWith([](auto& system) { drainedBattery(system).watts = 21.9; }), IsEmpty());
  EXPECT_THAT(strainsWith([](auto& system) { drainedBattery(system).isPluggedIn = true; }),
              IsEmpty());
}

TEST(StrainRules, StandInTheirFixedOrder) {
  const auto strains = strainsWith([](auto& system) {
    drainedBattery(system);
    system.diskReadBytesPerSec = 1e12;
    system.thermal.hottestCelsius = 99;
    system.neuralEnginePercent = 99;
    system.gpuPercent = 99;
    system.memoryPressurePercent = 99;
    system.cpuPercent = 99;
  });
  EXPECT_THAT(strains, ElementsAre(StrainKind::cpu, StrainKind::memory, StrainKind::gpu,
                                   StrainKind::neuralEngine, StrainKind::temperature,
                                   StrainKind::disk, StrainKind::battery));
}

TEST(StrainRules, StrainsCanStandWhileNoFindingFires) {
  NewInsights insights;
  insights.system.cpuPercent = 100;
  EXPECT_THAT(insights.tick(), IsEmpty());
  EXPECT_THAT(insights.last.activeStrains, ElementsAre(StrainKind::cpu));
}

TEST(StrainRules, HaveNoCooldownAndNoMemory) {
  ScriptedInsights insights;
  insights.system.thermal.hottestCelsius = 90;
  for (int tick = 0; tick < 3; ++tick) {
    insights.tickAfter(2);
    EXPECT_THAT(insights.last.activeStrains, ElementsAre(StrainKind::temperature));
  }
  insights.system.thermal.hottestCelsius = 50;
  insights.tickAfter(2);
  EXPECT_THAT(insights.last.activeStrains, IsEmpty());
}

}  // namespace
}  // namespace korvantis
