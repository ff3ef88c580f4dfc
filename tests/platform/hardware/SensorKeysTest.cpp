#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tuple>

#include "platform/SMCCalls.h"
#include "platform/hardware/HardwareTree.h"
#include "platform/linux/hardware/ControllerKeys.h"
#include "support/ChildProcess.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::HardwareTree;
using testing::DoubleEq;
using testing::IsEmpty;
using testing::Optional;
using testing::Pair;
using testing::UnorderedElementsAre;

auto is(double value) {
  return testing::DoubleNear(value, 0.001);
}

TEST(SensorKeys, IntelLaptopHasItsHottestCoresOfBothKinds) {
  const HardwareTree tree("intel-laptop");
  EXPECT_THAT(
      tree.keys(),
      UnorderedElementsAre(Pair("Tp01", is(60)), Pair("Tp05", is(58)), Pair("Te05", is(53)),
                           Pair("Tf04", is(51)), Pair("TC0P", is(61)), Pair("TH0x", is(38.85)),
                           Pair("TW0P", is(44)), Pair("FNum", is(2)), Pair("F0Ac", is(2510)),
                           Pair("F1Ac", is(2380)), Pair("F1Mn", is(1800)), Pair("F1Mx", is(6100))));
}

TEST(SensorKeys, AmdLaptopHasDiesCardsAndTheDischargingBattery) {
  const HardwareTree tree("amd-laptop");
  EXPECT_THAT(
      tree.keys(),
      UnorderedElementsAre(Pair("Tp01", is(60.25)), Pair("Tp05", is(57.75)), Pair("TC0P", is(66.5)),
                           Pair("Tg05", is(55)), Pair("Tg0D", is(63)), Pair("TB0T", is(31.2)),
                           Pair("TW0P", is(41)), Pair("PSTR", is(18)), Pair("FNum", is(1)),
                           Pair("F0Ac", is(1500)), Pair("F0Mn", is(0)), Pair("F0Mx", is(3300))));
}

TEST(SensorKeys, FansComeInTheOrderOfTheirNumbersAndOthersSensorsAreNotGuessedAt) {
  const HardwareTree tree("nvidia-desktop");
  EXPECT_THAT(tree.keys(), UnorderedElementsAre(Pair("Tp01", is(44)), Pair("Tp05", is(43)),
                                                Pair("TC0P", is(45)), Pair("FNum", is(3)),
                                                Pair("F0Ac", is(830)), Pair("F1Ac", is(1210)),
                                                Pair("F1Mn", is(0)), Pair("F2Ac", is(0))));
}

TEST(SensorKeys, ArmBoardHasItsOneZoneAndFan) {
  const HardwareTree tree("arm-board");
  EXPECT_THAT(tree.keys(), UnorderedElementsAre(Pair("TC0P", is(52.582)), Pair("FNum", is(1)),
                                                Pair("F0Ac", is(3021))));
}

TEST(SensorKeys, VirtualMachineAndBareContainerHaveNone) {
  EXPECT_THAT(HardwareTree("virtual-machine").keys(), IsEmpty());
  EXPECT_THAT(HardwareTree("bare-container").keys(), IsEmpty());
}

TEST(SensorKeys, ExchangeRefusesWhatAControllerRefuses) {
  const HardwareTree tree("arm-board");
  const SMCCalls& calls = tree.controller;
  EXPECT_EQ(calls.IOServiceGetMatchingService("AppleFan"), 0U);
  const std::uint32_t service = calls.IOServiceGetMatchingService("AppleSMC");
  std::uint32_t connection = 0;
  EXPECT_NE(calls.IOServiceOpen(service + 1, 0, &connection), 0);
  ASSERT_EQ(calls.IOServiceOpen(service, 0, &connection), 0);
  EXPECT_EQ(calls.IOObjectRelease(service), 0);
  SMCKeyData question;
  question.key = smcFourCharacterCode("TC0P");
  question.data8 = smcReadKeyCommand;
  SMCKeyData answer;
  std::size_t size = sizeof answer;
  const auto ask = [&](std::uint32_t to, std::uint32_t selector, std::size_t inputSize) {
    return calls.IOConnectCallStructMethod(to, selector, &question, inputSize, &answer, &size);
  };
  EXPECT_NE(ask(connection + 1, smcExchangeSelector, sizeof question), 0);
  EXPECT_NE(ask(connection, 3, sizeof question), 0);
  EXPECT_NE(ask(connection, smcExchangeSelector, 75), 0);
  size = 75;
  EXPECT_NE(ask(connection, smcExchangeSelector, sizeof question), 0);
  size = sizeof answer;
  EXPECT_EQ(ask(connection, smcExchangeSelector, sizeof question), 0);
  EXPECT_EQ(answer.result, 0);
  question.data8 = 6;
  EXPECT_EQ(ask(connection, smcExchangeSelector, sizeof question), 0);
  EXPECT_NE(answer.result, 0);
  question.key = smcFourCharacterCode("TC1P");
  question.data8 = smcKeyInformationCommand;
  EXPECT_EQ(ask(connection, smcExchangeSelector, sizeof question), 0);
  EXPECT_NE(answer.result, 0);
  EXPECT_EQ(answer.dataSize, 0U);
  EXPECT_EQ(calls.IOServiceClose(connection), 0);
}

TEST(SensorKeys, ASensorThatVanishesBetweenTwoReadingsIsAbsent) {
  HardwareTree tree("arm-board");
  auto child = ChildProcess::prepared();
  // A number that the kernel makes, whose open descriptor fails once the process has gone, as one
  // of a device does that was unplugged.
  const std::string number = "/proc/" + std::to_string(child.pid()) + "/oom_score_adj";
  tree.link("sys/class/hwmon/hwmon0/temp1_input", number);
  tree.open();
  EXPECT_THAT(tree.key("TC0P"), testing::Ne(std::nullopt));
  child.end();
  tree.seconds = tree.seconds + 2;
  EXPECT_EQ(tree.key("TC0P"), std::nullopt);
  EXPECT_THAT(tree.key("F0Ac"), Optional(DoubleEq(3021)));
}

TEST(SensorKeys, TextWhereANumberBelongsIsNoReading) {
  HardwareTree tree("arm-board");
  for (const char* const text : {"", "warm", "52582 C", "0x30", "99999999999999999999999"}) {
    tree.seconds = tree.seconds + 2;
    tree.write("sys/class/hwmon/hwmon0/temp1_input", text);
    tree.write("sys/class/hwmon/hwmon1/fan1_input", text);
    EXPECT_EQ(tree.key("TC0P"), std::nullopt) << text;
    EXPECT_EQ(tree.key("F0Ac"), std::nullopt) << text;
    EXPECT_THAT(tree.key("FNum"), Optional(1.0)) << text;
  }
  tree.seconds = tree.seconds + 2;
  tree.write("sys/class/hwmon/hwmon0/temp1_input", "-5000\n");
  EXPECT_THAT(tree.key("TC0P"), Optional(DoubleEq(-5)));
}

TEST(SensorKeys, OneReadingAnswersForAQuarterOfASecond) {
  HardwareTree tree("arm-board");
  EXPECT_THAT(tree.key("F0Ac"), Optional(3021.0));
  tree.write("sys/class/hwmon/hwmon1/fan1_input", "100\n");
  tree.seconds = tree.seconds + 0.24;
  EXPECT_THAT(tree.key("F0Ac"), Optional(3021.0));
  tree.seconds = tree.seconds + 0.01;
  EXPECT_THAT(tree.key("F0Ac"), Optional(100.0));
}

TEST(SensorKeys, OneReadingAnswersAlsoWhenItTookLonger) {
  HardwareTree tree("arm-board");
  PowerSupplies supplies(tree.sources);
  int readings = 0;
  ControllerKeys keys(tree.sources, supplies, [&]() -> std::optional<double> {
    ++readings;
    tree.seconds = tree.seconds + 0.3;
    return std::nullopt;
  });
  for (int question = 0; question < 5; ++question) {
    EXPECT_TRUE(keys.value(smcFourCharacterCode("F0Ac")));
  }
  EXPECT_EQ(readings, 1);
}

TEST(SensorKeys, SensorsThatMoveOrTurnUpAreFoundAfterThirtySeconds) {
  HardwareTree tree("arm-board");
  EXPECT_EQ(tree.key("TH0x"), std::nullopt);
  tree.write("sys/class/hwmon/hwmon1/name", "cpu_thermal\n");
  tree.remove("sys/class/hwmon/hwmon1/fan1_input");
  tree.write("sys/class/hwmon/hwmon1/temp1_input", "70000\n");
  tree.write("sys/class/hwmon/hwmon0/name", "nvme\n");
  tree.write("sys/class/hwmon/hwmon0/temp1_label", "Composite\n");
  tree.seconds = tree.seconds + 29.5;
  EXPECT_EQ(tree.key("TH0x"), std::nullopt);
  tree.seconds = tree.seconds + 0.5;
  EXPECT_THAT(tree.key("TH0x"), Optional(is(52.582)));
  EXPECT_THAT(tree.key("TC0P"), Optional(is(70)));
  EXPECT_EQ(tree.key("FNum"), std::nullopt);
}

TEST(SensorKeys, WhatEachTickReadsStaysOpen) {
  HardwareTree tree("intel-laptop");
  const auto ask = [&] {
    tree.seconds = tree.seconds + 2;
    return std::tuple(tree.keys(), tree.services("AppleSmartBattery"), tree.graphicsClients(),
                      tree.calls.processInfo.thermalState());
  };
  ask();
  // From the second reading on there is a power too.
  const auto before = ask();
  // A file that is written anew is another one: whoever kept the old one open sees no change.
  for (const char* const path :
       {"sys/class/hwmon/hwmon5/temp1_input", "sys/class/hwmon/hwmon7/fan1_input",
        "sys/class/power_supply/BAT0/uevent", "sys/class/thermal/thermal_zone1/temp",
        "proc/1200/fdinfo/9", "proc/1300/fdinfo/5"}) {
    tree.remove(path);
    tree.write(path, "130000\n");
  }
  for (int tick = 0; tick < 10; ++tick) EXPECT_EQ(ask(), before);
}

TEST(SensorKeys, ACardThatSleepsIsNotWoken) {
  HardwareTree tree("amd-laptop");
  const std::string card = "sys/devices/pci0000:00/0000:03:00.0/";
  for (const char* const status : {"suspended\n", "suspending\n"}) {
    tree.write(card + "power/runtime_status", status);
    tree.seconds = tree.seconds + 2;
    EXPECT_THAT(tree.key("Tg05"), Optional(DoubleEq(49))) << "the integrated one alone";
    EXPECT_EQ(tree.key("Tg0D"), std::nullopt);
    EXPECT_EQ(tree.key("F0Ac"), std::nullopt);
    EXPECT_THAT(tree.key("FNum"), Optional(1.0));
  }
}

TEST(SensorKeys, PlatformEnergyStandsInOnMains) {
  HardwareTree tree("intel-laptop");
  EXPECT_EQ(tree.key("PSTR"), std::nullopt) << "one reading is no power";
  tree.seconds = tree.seconds + 2;
  tree.write("sys/class/powercap/intel-rapl:1/energy_uj", "1050000000\n");
  EXPECT_THAT(tree.key("PSTR"), Optional(is(25)));
  tree.seconds = tree.seconds + 2;
  // The counter begins again after its range of 262143.32885 joules.
  tree.write("sys/class/powercap/intel-rapl:1/energy_uj", "10000000\n");
  const double wrapped = (262143.32885 - 1050 + 10) / 2;
  EXPECT_THAT(tree.key("PSTR"), Optional(testing::DoubleNear(wrapped, 0.1)));
  tree.seconds = tree.seconds + 2;
  tree.write("sys/class/powercap/intel-rapl:1/energy_uj", "refused\n");
  EXPECT_EQ(tree.key("PSTR"), std::nullopt);
}

}  // namespace
}  // namespace korvantis
