#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "samplers/CPULoad.h"

namespace korvantis {
namespace {

using testing::ElementsAre;

CPULoad loadOf(const std::vector<CoreTicks>& before, const std::vector<CoreTicks>& after) {
  return cpuLoad(before, after);
}

TEST(MachineCPULoad, WithoutTicksTheCannedAnswerStands) {
  const CPULoad expected{{10.0, 8.0, 6.0, 8.0}, 8.0, 5.0, 3.0};
  EXPECT_EQ(cpuLoadWithoutTicks(), expected);
}

TEST(MachineCPULoad, FirstListGivesTwelvePercentOnEveryCore) {
  const CPULoad expected{{12.0, 12.0, 12.0}, 12.0, 8.0, 4.0};
  EXPECT_EQ(loadOf({}, std::vector<CoreTicks>(3)), expected);
}

TEST(MachineCPULoad, CoresThatComeOrGoGiveOneMoreTickOfPlaceholders) {
  const CPULoad fewer{{12.0}, 12.0, 8.0, 4.0};
  EXPECT_EQ(loadOf(std::vector<CoreTicks>(2), {{.user = 50}}), fewer);
  const CPULoad more{{12.0, 12.0}, 12.0, 8.0, 4.0};
  EXPECT_EQ(loadOf({{.user = 50}}, std::vector<CoreTicks>(2)), more);
}

TEST(MachineCPULoad, NiceTimeCountsAsUserTime) {
  const CPULoad load = loadOf({CoreTicks{}}, {{.user = 10, .system = 20, .idle = 40, .nice = 30}});
  EXPECT_THAT(load.perCoreCPUPercent, ElementsAre(60.0));
  EXPECT_DOUBLE_EQ(load.cpuUserPercent, 40.0);
  EXPECT_DOUBLE_EQ(load.cpuSystemPercent, 20.0);
  EXPECT_DOUBLE_EQ(load.cpuPercent, 60.0);
}

TEST(MachineCPULoad, EveryCoreWeighsByItsTicks) {
  const CPULoad load = loadOf({CoreTicks{}, CoreTicks{}}, {{.user = 10}, {.idle = 30}});
  EXPECT_THAT(load.perCoreCPUPercent, ElementsAre(100.0, 0.0));
  EXPECT_DOUBLE_EQ(load.cpuPercent, 25.0);
}

TEST(MachineCPULoad, TicksThatFallCountAsUnchanged) {
  const CPULoad load = loadOf({{.user = 100, .system = 100, .idle = 100, .nice = 100}},
                              {{.user = 5, .system = 130, .idle = 170, .nice = 0}});
  EXPECT_THAT(load.perCoreCPUPercent, ElementsAre(30.0));
  EXPECT_DOUBLE_EQ(load.cpuUserPercent, 0.0);
  EXPECT_DOUBLE_EQ(load.cpuSystemPercent, 30.0);
}

TEST(MachineCPULoad, NoTicksInBetweenGiveZeroOnAllFigures) {
  const std::vector<CoreTicks> same{{.user = 7, .system = 7, .idle = 7, .nice = 7}};
  const CPULoad expected{{0.0}, 0.0, 0.0, 0.0};
  EXPECT_EQ(loadOf(same, same), expected);
}

TEST(MachineCPULoad, ACoreWithoutTicksIsZeroBesideOneWithTicks) {
  const CPULoad load = loadOf({CoreTicks{}, CoreTicks{}}, {CoreTicks{}, {.user = 10, .idle = 10}});
  EXPECT_THAT(load.perCoreCPUPercent, ElementsAre(0.0, 50.0));
  EXPECT_DOUBLE_EQ(load.cpuPercent, 50.0);
}

TEST(MachineCPULoad, ABusyMachineStaysWithinHundred) {
  const std::vector<CoreTicks> after(3, CoreTicks{.user = 1, .system = 2, .nice = 4});
  const CPULoad load = loadOf(std::vector<CoreTicks>(3), after);
  EXPECT_THAT(load.perCoreCPUPercent, ElementsAre(100.0, 100.0, 100.0));
  EXPECT_LE(load.cpuPercent, 100.0);
  EXPECT_NEAR(load.cpuPercent, 100.0, 1e-9);
}

TEST(MachineCPULoad, TicksAreReadAsSignedNumbersInDarwinOrder) {
  const std::array<std::int32_t, 8> reply{
      1, 2, 3, 4, std::numeric_limits<std::int32_t>::max(), -1, std::numeric_limits<int>::min(), 0};
  const std::vector<CoreTicks> cores = decodedCoreTicks(reply);
  ASSERT_EQ(cores.size(), 2U);
  EXPECT_EQ(cores[0], (CoreTicks{.user = 1, .system = 2, .idle = 3, .nice = 4}));
  EXPECT_EQ(cores[1], (CoreTicks{.user = 2147483647, .system = 0, .idle = 0, .nice = 0}));
}

TEST(MachineCPULoad, WordsBeyondTheLastWholeCoreAreLeftOut) {
  const std::array<std::int32_t, 7> reply{1, 2, 3, 4, 5, 6, 7};
  EXPECT_EQ(decodedCoreTicks(reply).size(), 1U);
}

}  // namespace
}  // namespace korvantis
