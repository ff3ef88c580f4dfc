#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplers/BluetoothPeripheralList.h"
#include "samplers/RegistryScript.h"

namespace korvantis {
namespace {

using test::RegistryScript;
using test::ScriptedEntry;
using test::text;
using test::whole;
using testing::ElementsAre;
using testing::IsEmpty;

ScriptedEntry device(const std::string& name, std::int64_t percent) {
  return {PropertyMap{{"Product", text(name)}, {"BatteryPercent", whole(percent)}}};
}

class BluetoothPeripheralListTest : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(registry.heldEntries(), 0); }

  std::vector<BluetoothPeripheral> read() { return readBluetoothPeripherals(registry.calls()); }
  std::vector<BluetoothPeripheral> read(std::vector<ScriptedEntry> devices) {
    registry.services["IOBluetoothHIDDriver"] = std::move(devices);
    return read();
  }
  std::string category(const std::string& name) { return read({device(name, 50)}).at(0).category; }

  RegistryScript registry;
};

TEST_F(BluetoothPeripheralListTest, AKeyboardReportingZeroIsLeftOut) {
  EXPECT_THAT(read({device("Magic Keyboard", 0)}), IsEmpty());
  EXPECT_EQ(read({device("Magic Keyboard", 1)}).size(), 1U);
}

TEST_F(BluetoothPeripheralListTest, TheNameTellsTheCategory) {
  EXPECT_EQ(category("Magic Keyboard"), "keyboard");
  EXPECT_EQ(category("MX Master Mouse"), "pointing");
  EXPECT_EQ(category("Magic Trackpad"), "pointing");
  EXPECT_EQ(category("AirPods Pro"), "audio");
  EXPECT_EQ(category("BEATS Studio"), "audio");
  EXPECT_EQ(category("Some Headphones"), "audio");
  EXPECT_EQ(category("Pen"), "accessory");
}

TEST_F(BluetoothPeripheralListTest, TheFirstWordThatMatchesDecides) {
  EXPECT_EQ(category("Keyboard with mouse"), "keyboard");
  EXPECT_EQ(category("Beats Mouse"), "pointing");
}

TEST_F(BluetoothPeripheralListTest, ADeviceSeenUnderTwoClassesAppearsOnceAsFirstSeen) {
  registry.services["AppleHSBluetoothDevice"] = {device("AirPods", 10), device("Pen", 60)};
  registry.services["AppleDeviceManagementHIDEventService"] = {device("AirPods", 20)};
  registry.services["IOBluetoothHIDDriver"] = {device("Mouse", 30), device("AirPods", 40)};
  const auto peripherals = read();
  ASSERT_EQ(peripherals.size(), 3U);
  EXPECT_EQ(peripherals[0].name, "AirPods");
  EXPECT_EQ(peripherals[0].batteryPercent, 20);
  EXPECT_EQ(peripherals[1].name, "Mouse");
  EXPECT_EQ(peripherals[2].name, "Pen");
}

TEST_F(BluetoothPeripheralListTest, AFailedMatchAndAnUnreadableDeviceArePassedOver) {
  registry.classesThatFailToMatch = {"AppleDeviceManagementHIDEventService"};
  EXPECT_EQ(read({{std::nullopt}, device("Mouse", 30)}).size(), 1U);
}

TEST_F(BluetoothPeripheralListTest, TheDeviceNameStandsInForTheProduct) {
  EXPECT_EQ(
      read({{PropertyMap{{"DeviceName", text("Pen")}, {"BatteryPercent", whole(5)}}}}).at(0).name,
      "Pen");
  EXPECT_THAT(read({{PropertyMap{{"BatteryPercent", whole(5)}}},
                    {PropertyMap{{"Product", text("")},
                                 {"DeviceName", text("Pen")},
                                 {"BatteryPercent", whole(5)}}}}),
              IsEmpty());
}

TEST_F(BluetoothPeripheralListTest, TheSingleBatteryStandsInForTheCommonOne) {
  const PropertyMap single{{"Product", text("Pen")}, {"BatteryPercentSingle", whole(7)}};
  EXPECT_EQ(read({{single}}).at(0).batteryPercent, 7);
  PropertyMap both = single;
  both["BatteryPercent"] = whole(0);
  EXPECT_THAT(read({{both}}), IsEmpty());
  EXPECT_THAT(read({{PropertyMap{{"Product", text("Pen")}}}}), IsEmpty());
}

TEST_F(BluetoothPeripheralListTest, PartsAreToldWhereTheyAre) {
  PropertyMap properties{{"Product", text("AirPods")},
                         {"BatteryPercent", whole(50)},
                         {"BatteryPercentLeft", whole(40)},
                         {"BatteryPercentCase", whole(0)},
                         {"BatteryPercentRight", text("x")}};
  EXPECT_THAT(read({{properties}}),
              ElementsAre(BluetoothPeripheral{"AirPods", "audio", 50, 40, std::nullopt, 0}));
}

}  // namespace
}  // namespace korvantis
