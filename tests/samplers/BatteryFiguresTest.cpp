#include <gtest/gtest.h>

#include "samplers/BatteryFigures.h"
#include "samplers/RegistryScript.h"

namespace korvantis {
namespace {

using test::flag;
using test::real;
using test::RegistryScript;
using test::text;
using test::whole;

class BatteryFiguresTest : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(registry.heldEntries(), 0); }

  BatterySample read() {
    PowerCalls power;
    power.powerSources = [this] { return sources; };
    return readBattery(power, registry.calls());
  }
  BatterySample readDevice(PropertyMap properties) {
    registry.services["AppleSmartBattery"] = {{std::move(properties)}};
    return read();
  }

  std::optional<std::vector<std::optional<PropertyMap>>> sources;
  RegistryScript registry;
};

BatterySample withoutBattery() {
  return {.percentage = 100.0,
          .isCharging = false,
          .isPluggedIn = true,
          .watts = 0,
          .healthPercent = 98.0,
          .cycleCount = 48,
          .temperatureCelsius = 31.2,
          .timeRemainingMinutes = std::nullopt};
}

TEST_F(BatteryFiguresTest, WithoutPowerSourceAndBatteryThePlaceholdersStand) {
  EXPECT_EQ(read(), withoutBattery());
  sources.emplace();
  EXPECT_EQ(read(), withoutBattery());
  sources->push_back(std::nullopt);
  EXPECT_EQ(read(), withoutBattery());
  registry.services["AppleSmartBattery"] = {{std::nullopt}};
  EXPECT_EQ(read(), withoutBattery());
  registry.classesThatFailToMatch = {"AppleSmartBattery"};
  EXPECT_EQ(read(), withoutBattery());
}

TEST_F(BatteryFiguresTest, APowerSourceTellsChargeMainsAndTime) {
  sources = {PropertyMap{{"Current Capacity", whole(2)},
                         {"Max Capacity", whole(3)},
                         {"Is Charging", flag(true)},
                         {"Power Source State", text("Battery Power")},
                         {"Time to Empty", whole(90)},
                         {"Time to Full Charge", whole(20)}}};
  const BatterySample sample = read();
  EXPECT_EQ(sample.percentage, 66.7);
  EXPECT_TRUE(sample.isCharging);
  EXPECT_FALSE(sample.isPluggedIn);
  EXPECT_EQ(sample.timeRemainingMinutes, 90);
}

TEST_F(BatteryFiguresTest, OnlyACPowerIsPluggedIn) {
  sources = {PropertyMap{{"Power Source State", text("AC Power")}}};
  EXPECT_TRUE(read().isPluggedIn);
  sources = {PropertyMap{{"Power Source State", text("ac power")}}};
  EXPECT_FALSE(read().isPluggedIn);
}

TEST_F(BatteryFiguresTest, TimeToFullStandsInForATimeToEmptyBelowOne) {
  for (const std::int64_t empty : {0, -1}) {
    sources = {PropertyMap{{"Time to Empty", whole(empty)}, {"Time to Full Charge", whole(20)}}};
    EXPECT_EQ(read().timeRemainingMinutes, 20);
  }
  sources = {PropertyMap{{"Time to Empty", text("5")}, {"Time to Full Charge", whole(20)}}};
  EXPECT_EQ(read().timeRemainingMinutes, 20);
  sources = {PropertyMap{{"Time to Empty", whole(1)}}};
  EXPECT_EQ(read().timeRemainingMinutes, 1);
  sources = {PropertyMap{{"Time to Empty", whole(0)}, {"Time to Full Charge", whole(0)}}};
  EXPECT_EQ(read().timeRemainingMinutes, std::nullopt);
}

TEST_F(BatteryFiguresTest, AMaximumOfZeroAndAMissingCapacityLeaveTheChargeAlone) {
  sources = {PropertyMap{{"Current Capacity", whole(5)}, {"Max Capacity", whole(0)}}};
  EXPECT_EQ(read().percentage, 100.0);
  sources = {PropertyMap{{"Max Capacity", whole(50)}}};
  EXPECT_EQ(read().percentage, 100.0);
  sources = {PropertyMap{{"Current Capacity", text("5")}, {"Max Capacity", whole(50)}}};
  EXPECT_EQ(read().percentage, 100.0);
}

TEST_F(BatteryFiguresTest, ALaterSourceOverwritesOnlyWhatItTells) {
  sources = {PropertyMap{{"Current Capacity", whole(10)},
                         {"Max Capacity", whole(100)},
                         {"Power Source State", text("Battery Power")},
                         {"Time to Empty", whole(7)}},
             std::nullopt,
             PropertyMap{{"Current Capacity", real(42)}, {"Max Capacity", real(100)}}};
  const BatterySample sample = read();
  EXPECT_EQ(sample.percentage, 42.0);
  EXPECT_FALSE(sample.isPluggedIn);
  EXPECT_EQ(sample.timeRemainingMinutes, 7);
}

TEST_F(BatteryFiguresTest, ATemperatureAbove2500IsTenthsOfAKelvinOthersHundredthsOfADegree) {
  const auto celsius = [this](PropertyValue raw) {
    return readDevice({{"Temperature", std::move(raw)}}).temperatureCelsius;
  };
  EXPECT_EQ(celsius(whole(3050)), 31.9);
  EXPECT_EQ(celsius(whole(2500)), 25.0);
  EXPECT_NEAR(celsius(whole(2501)), -23.05, 0.051);
  EXPECT_EQ(celsius(real(0.5)), 0.0);
  EXPECT_EQ(celsius(whole(0)), 31.2);
  EXPECT_EQ(celsius(whole(-100)), 31.2);
  EXPECT_EQ(celsius(text("3050")), 31.2);
}

TEST_F(BatteryFiguresTest, HealthIsHeldTo50To100) {
  const auto health = [this](const char* key, std::int64_t capacity, std::int64_t design) {
    return readDevice({{key, whole(capacity)}, {"DesignCapacity", whole(design)}}).healthPercent;
  };
  EXPECT_EQ(health("AppleRawMaxCapacity", 1000, 5000), 50.0);
  EXPECT_EQ(health("AppleRawMaxCapacity", 5500, 5000), 100.0);
  EXPECT_EQ(health("AppleRawMaxCapacity", 4321, 5000), 86.4);
  EXPECT_EQ(health("NominalChargeCapacity", 4500, 5000), 90.0);
  EXPECT_EQ(health("AppleRawMaxCapacity", 4500, 0), 98.0);
  EXPECT_EQ(readDevice({{"AppleRawMaxCapacity", whole(4500)}}).healthPercent, 98.0);
  EXPECT_EQ(readDevice({{"DesignCapacity", whole(5000)}}).healthPercent, 98.0);
}

TEST_F(BatteryFiguresTest, TheRawCapacityComesBeforeTheNominalOne) {
  EXPECT_EQ(readDevice({{"AppleRawMaxCapacity", whole(4000)},
                        {"NominalChargeCapacity", whole(4500)},
                        {"DesignCapacity", whole(5000)}})
                .healthPercent,
            80.0);
}

TEST_F(BatteryFiguresTest, PowerIsThePositiveProductOfVoltageAndCurrent) {
  EXPECT_EQ(readDevice({{"Voltage", whole(12000)}, {"InstantAmperage", whole(-1500)}}).watts, 18.0);
  EXPECT_EQ(readDevice({{"Voltage", whole(12000)}, {"Amperage", whole(1000)}}).watts, 12.0);
  EXPECT_EQ(
      readDevice(
          {{"Voltage", whole(12000)}, {"InstantAmperage", whole(500)}, {"Amperage", whole(1000)}})
          .watts,
      6.0);
  EXPECT_EQ(readDevice({{"Voltage", whole(12000)}}).watts, 0);
  EXPECT_EQ(readDevice({{"Amperage", whole(1000)}}).watts, 0);
}

TEST_F(BatteryFiguresTest, OnlyAWholeNumberOfCyclesCounts) {
  EXPECT_EQ(readDevice({{"CycleCount", whole(312)}}).cycleCount, 312);
  EXPECT_EQ(readDevice({{"CycleCount", text("312")}}).cycleCount, 48);
}

TEST_F(BatteryFiguresTest, TheFirstBatteryDeviceIsTheOneRead) {
  registry.services["AppleSmartBattery"] = {{PropertyMap{{"CycleCount", whole(1)}}},
                                            {PropertyMap{{"CycleCount", whole(2)}}}};
  EXPECT_EQ(read().cycleCount, 1);
}

}  // namespace
}  // namespace korvantis
