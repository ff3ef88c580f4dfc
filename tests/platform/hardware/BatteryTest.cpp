#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/hardware/HardwareTree.h"
#include "platform/linux/hardware/BatteryDescription.h"

namespace korvantis {
namespace {

using test::HardwareTree;
using testing::ElementsAre;
using testing::IsEmpty;

PropertyValue whole(std::int64_t number) {
  return PropertyValue{number};
}

PropertyValue text(const char* words) {
  return PropertyValue{std::string(words)};
}

PropertyMap batteryOf(const std::string& uevent) {
  return batteryProperties({parsePowerSupply(uevent)}).value_or(PropertyMap());
}

PropertyMap sourceOf(const std::string& uevent) {
  return powerSourceDescription({parsePowerSupply(uevent)}).value_or(PropertyMap());
}

const std::string battery = "POWER_SUPPLY_TYPE=Battery\n";

TEST(Battery, OneThatChargesOnMains) {
  const HardwareTree tree("intel-laptop");
  EXPECT_THAT(tree.services("AppleSmartBattery"),
              ElementsAre(PropertyMap{{"AppleRawMaxCapacity", whole(50000)},
                                      {"DesignCapacity", whole(57000)},
                                      {"CycleCount", whole(212)},
                                      {"Voltage", whole(16000)},
                                      {"InstantAmperage", whole(1250)}}));
  const auto sources = tree.calls.power.powerSources();
  ASSERT_TRUE(sources);
  EXPECT_THAT(*sources, ElementsAre(PropertyMap{{"Current Capacity", whole(30000)},
                                                {"Max Capacity", whole(50000)},
                                                {"Is Charging", PropertyValue{true}},
                                                {"Power Source State", text("AC Power")},
                                                {"Time to Full Charge", whole(60)}}));
}

TEST(Battery, SeveralPacksCountTogether) {
  const HardwareTree tree("amd-laptop");
  EXPECT_THAT(tree.services("AppleSmartBattery"),
              ElementsAre(PropertyMap{{"AppleRawMaxCapacity", whole(5000)},
                                      {"DesignCapacity", whole(6000)},
                                      {"CycleCount", whole(34)},
                                      {"Temperature", whole(3043)},
                                      {"Voltage", whole(12000)},
                                      {"InstantAmperage", whole(-1500)}}));
  const auto sources = tree.calls.power.powerSources();
  ASSERT_TRUE(sources);
  EXPECT_THAT(*sources, ElementsAre(PropertyMap{{"Current Capacity", whole(3500)},
                                                {"Max Capacity", whole(5000)},
                                                {"Is Charging", PropertyValue{false}},
                                                {"Power Source State", text("Battery Power")},
                                                {"Time to Empty", whole(140)}}));
}

TEST(Battery, APeripheralsBatteryIsNotTheMachines) {
  const HardwareTree tree("nvidia-desktop");
  EXPECT_THAT(tree.services("AppleSmartBattery"), IsEmpty());
  const auto sources = tree.calls.power.powerSources();
  ASSERT_TRUE(sources);
  EXPECT_THAT(*sources, IsEmpty());
}

TEST(Battery, MachinesWithoutOneHaveNoSource) {
  EXPECT_THAT(HardwareTree("virtual-machine").services("AppleSmartBattery"), IsEmpty());
  EXPECT_EQ(HardwareTree("virtual-machine").calls.power.powerSources()->size(), 0U);
  EXPECT_THAT(HardwareTree("bare-container").services("AppleSmartBattery"), IsEmpty());
  EXPECT_EQ(HardwareTree("bare-container").calls.power.powerSources(), std::nullopt);
}

TEST(Battery, DesignCapacityOfZeroIsHandedOverAsItIs) {
  const PropertyMap map =
      batteryOf(battery + "POWER_SUPPLY_CHARGE_FULL=3000000\nPOWER_SUPPLY_CHARGE_FULL_DESIGN=0\n");
  EXPECT_EQ(map, (PropertyMap{{"AppleRawMaxCapacity", whole(3000)}, {"DesignCapacity", whole(0)}}));
}

TEST(Battery, AnyBatteryThatTellsNothingIsStillThere) {
  EXPECT_EQ(batteryProperties({parsePowerSupply(battery)}), PropertyMap());
  EXPECT_EQ(sourceOf(battery), (PropertyMap{{"Is Charging", PropertyValue{false}},
                                            {"Power Source State", text("AC Power")}}));
}

TEST(Battery, TextWhereANumberBelongsIsMissing) {
  EXPECT_EQ(batteryOf(battery + "POWER_SUPPLY_CYCLE_COUNT=many\nPOWER_SUPPLY_TEMP=\n"
                                "POWER_SUPPLY_VOLTAGE_NOW=12 V\nPOWER_SUPPLY_CHARGE_FULL=0x10\n"
                                "POWER_SUPPLY_\nNONSENSE\n=\n"),
            PropertyMap());
}

TEST(Battery, CycleCountOfZeroIsAbsent) {
  EXPECT_EQ(batteryOf(battery + "POWER_SUPPLY_CYCLE_COUNT=0\n"), PropertyMap());
  EXPECT_EQ(batteryOf(battery + "POWER_SUPPLY_CYCLE_COUNT=1\n").at("CycleCount"), whole(1));
}

TEST(Battery, TemperatureIsInTenthsOfAKelvinAtAnyWarmth) {
  for (int tenths = -150; tenths <= 800; ++tenths) {
    const PropertyMap map =
        batteryOf(battery + "POWER_SUPPLY_TEMP=" + std::to_string(tenths) + "\n");
    const auto kelvin = std::get<std::int64_t>(map.at("Temperature").value);
    ASSERT_GT(kelvin, 2500) << "it would be taken for hundredths of a degree";
    ASSERT_NEAR(static_cast<double>(kelvin) / 10 - 273.15, tenths / 10.0, 0.0501);
  }
}

TEST(Battery, AmperageWithoutACurrentIsPowerByVoltage) {
  const std::string measured =
      battery + "POWER_SUPPLY_VOLTAGE_NOW=12000000\nPOWER_SUPPLY_POWER_NOW=18000000\n";
  EXPECT_EQ(batteryOf(measured).at("InstantAmperage"), whole(1500));
  const std::string down = measured + "POWER_SUPPLY_STATUS=Discharging\n";
  EXPECT_EQ(batteryOf(down).at("InstantAmperage"), whole(-1500));
  EXPECT_FALSE(batteryOf(battery + "POWER_SUPPLY_POWER_NOW=1\nPOWER_SUPPLY_VOLTAGE_NOW=0\n")
                   .contains("InstantAmperage"));
}

TEST(Battery, DischargesWhereTheChargerIsNoDevice) {
  const PropertyMap map =
      sourceOf(battery + "POWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_CAPACITY=37\n");
  EXPECT_EQ(map, (PropertyMap{{"Current Capacity", whole(37)},
                              {"Max Capacity", whole(100)},
                              {"Is Charging", PropertyValue{false}},
                              {"Power Source State", text("Battery Power")}}));
}

TEST(Battery, UsbChargerIsMains) {
  const auto source =
      powerSourceDescription({parsePowerSupply(battery + "POWER_SUPPLY_STATUS=Full\n"),
                              parsePowerSupply("POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=0\n"),
                              parsePowerSupply("POWER_SUPPLY_TYPE=USB\nPOWER_SUPPLY_ONLINE=1\n")});
  EXPECT_EQ(source->at("Power Source State"), text("AC Power"));
}

TEST(Battery, AnEmptyBayIsNoBattery) {
  HardwareTree tree;
  tree.write("sys/class/power_supply/BAT1/uevent",
             "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_PRESENT=0\n");
  EXPECT_THAT(tree.services("AppleSmartBattery"), IsEmpty());
}

TEST(Battery, DamagedFiguresDoNotOverflow) {
  const std::string huge = "9223372036854775807\n";
  const std::string least = "-9223372036854775808\n";
  const auto pack = parsePowerSupply(
      battery + "POWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_CHARGE_FULL=" + huge +
      "POWER_SUPPLY_CHARGE_NOW=" + huge + "POWER_SUPPLY_CURRENT_NOW=" + least +
      "POWER_SUPPLY_VOLTAGE_NOW=" + huge + "POWER_SUPPLY_TEMP=" + huge +
      "POWER_SUPPLY_CAPACITY=" + huge);
  EXPECT_FALSE(batteryProperties({pack, pack})->contains("AppleRawMaxCapacity"));
  EXPECT_FALSE(powerSourceDescription({pack, pack})->contains("Max Capacity"));
}

TEST(Battery, OneThatIsUnpluggedIsGoneAndAnotherIsFoundAfterThirtySeconds) {
  HardwareTree tree("intel-laptop");
  EXPECT_EQ(tree.services("AppleSmartBattery").size(), 1U);
  tree.write("sys/class/power_supply/BAT0/uevent", "");
  tree.seconds = tree.seconds + 2;
  EXPECT_THAT(tree.services("AppleSmartBattery"), IsEmpty());
  tree.write("sys/class/power_supply/BAT1/uevent", battery);
  tree.seconds = tree.seconds + 28;
  EXPECT_EQ(tree.services("AppleSmartBattery").size(), 1U);
}

}  // namespace
}  // namespace korvantis
