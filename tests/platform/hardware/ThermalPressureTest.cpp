#include <gtest/gtest.h>

#include "platform/hardware/HardwareTree.h"

namespace korvantis {
namespace {

using test::HardwareTree;

std::int64_t stateAfter(HardwareTree& tree, double seconds) {
  tree.seconds = tree.seconds + seconds;
  return tree.calls.processInfo.thermalState();
}

TEST(ThermalPressure, IsNominalWhereNothingIsKnown) {
  HardwareTree machine("virtual-machine");
  EXPECT_EQ(stateAfter(machine, 0), 0);
  HardwareTree container("bare-container");
  EXPECT_EQ(stateAfter(container, 0), 0);
}

TEST(ThermalPressure, FansAndIdleCoolersOfProcessorsAreNominal) {
  HardwareTree tree("intel-laptop");
  EXPECT_EQ(stateAfter(tree, 0), 0);
}

TEST(ThermalPressure, AProcessorThatIsHeldBackIsFair) {
  HardwareTree tree("amd-laptop");
  EXPECT_EQ(stateAfter(tree, 0), 1);
  tree.write("sys/class/thermal/cooling_device0/cur_state", "0\n");
  EXPECT_EQ(stateAfter(tree, 2), 0);
}

TEST(ThermalPressure, AZoneAtItsHotLimitIsSerious) {
  HardwareTree tree("intel-laptop");
  const std::string zone = "sys/class/thermal/thermal_zone1/temp";
  tree.write(zone, "97999\n");
  EXPECT_EQ(stateAfter(tree, 2), 0);
  tree.write(zone, "98000\n");
  EXPECT_EQ(stateAfter(tree, 2), 2);
}

TEST(ThermalPressure, AZoneWithinFiveDegreesOfItsCriticalLimitIsCritical) {
  HardwareTree tree("intel-laptop");
  const std::string zone = "sys/class/thermal/thermal_zone1/temp";
  tree.write(zone, "99999\n");
  EXPECT_EQ(stateAfter(tree, 2), 2);
  tree.write(zone, "100000\n");
  EXPECT_EQ(stateAfter(tree, 2), 3);
  HardwareTree board("arm-board");
  EXPECT_EQ(stateAfter(board, 0), 3);
}

TEST(ThermalPressure, ARisingThrottleCountIsSeriousForFiveSeconds) {
  HardwareTree tree("intel-laptop");
  EXPECT_EQ(stateAfter(tree, 0), 0);
  tree.write("sys/devices/system/cpu/cpu4/thermal_throttle/core_throttle_count", "1\n");
  EXPECT_EQ(stateAfter(tree, 2), 2);
  EXPECT_EQ(stateAfter(tree, 4.9), 2);
  EXPECT_EQ(stateAfter(tree, 0.3), 0);
  tree.write("sys/devices/system/cpu/cpu0/thermal_throttle/package_throttle_count", "6\n");
  EXPECT_EQ(stateAfter(tree, 2), 2);
}

TEST(ThermalPressure, AProcessorThatComesBackWithItsOldCountIsNoNewThrottling) {
  HardwareTree tree("intel-laptop");
  const std::string count = "sys/devices/system/cpu/cpu4/thermal_throttle/core_throttle_count";
  tree.write(count, "700\n");
  EXPECT_EQ(stateAfter(tree, 0), 0);
  tree.write(count, "gone\n");
  EXPECT_EQ(stateAfter(tree, 2), 0);
  tree.write(count, "700\n");
  EXPECT_EQ(stateAfter(tree, 2), 0);
  tree.write(count, "701\n");
  EXPECT_EQ(stateAfter(tree, 2), 2);
}

TEST(ThermalPressure, TextAndMissingFilesAreNoHeat) {
  HardwareTree tree("intel-laptop");
  tree.write("sys/class/thermal/thermal_zone1/temp", "hot\n");
  tree.write("sys/class/thermal/cooling_device0/cur_state", "much\n");
  tree.write("sys/devices/system/cpu/cpu0/thermal_throttle/core_throttle_count", "often\n");
  EXPECT_EQ(stateAfter(tree, 2), 0);
}

TEST(ThermalPressure, ZonesThatTurnUpAreFoundAfterThirtySeconds) {
  HardwareTree tree("virtual-machine");
  EXPECT_EQ(stateAfter(tree, 0), 0);
  tree.write("sys/class/thermal/cooling_device0/type", "Processor\n");
  tree.write("sys/class/thermal/cooling_device0/cur_state", "1\n");
  EXPECT_EQ(stateAfter(tree, 29.9), 0);
  EXPECT_EQ(stateAfter(tree, 0.3), 1);
}

}  // namespace
}  // namespace korvantis
