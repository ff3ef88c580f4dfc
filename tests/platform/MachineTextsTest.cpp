#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "platform/linux/DiskStatistics.h"
#include "platform/linux/MachineMemory.h"
#include "platform/linux/MachineProcessor.h"
#include "platform/linux/MachineTicks.h"
#include "platform/linux/NetworkDeviceTable.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t page = 4096;

TEST(MachineTicks, AreMaskedTo31BitsSoThatNoCoreReadsZeroForEver) {
  const auto cores = parseMachineTicks("cpu0 2147483648 2147483647 4294967295 2147483650 0 1 1\n");
  ASSERT_EQ(cores.size(), 1U);
  EXPECT_THAT(cores[0].cpu_ticks, ElementsAre(0, 1, 2, 2147483647));
}

TEST(MachineTicks, DamagedAndCutLinesAreLeftOut) {
  EXPECT_THAT(parseMachineTicks(""), IsEmpty());
  EXPECT_THAT(parseMachineTicks("cpu 1 2 3 4 5 6 7\n"), IsEmpty());
  EXPECT_THAT(parseMachineTicks("cpu0 1 2 3 4 5 6\n"), IsEmpty());
  EXPECT_THAT(parseMachineTicks("cpu0 1 2 x 4 5 6 7\n"), IsEmpty());
  EXPECT_THAT(parseMachineTicks("cpu0 1 2 3 4 5 6 7"), IsEmpty());
  EXPECT_EQ(parseMachineTicks("cpu0 1 2 3 4 5 6 7\ncpu1 1 2 3 4 5 6 7\ncpu2 1").size(), 2U);
}

TEST(MachineMemory, WiredIsNotBelowZero) {
  const auto counters = parsePageCounters("MemTotal: 100 kB\nAnonPages: 200 kB\n", 0, page);
  ASSERT_TRUE(counters.has_value());
  EXPECT_EQ(counters->wire_count, 0U);
  EXPECT_EQ(counters->internal_page_count, 50U);
}

TEST(MachineMemory, CachedBelowSharedCountsNoFiles) {
  const auto counters = parsePageCounters("MemTotal: 999 kB\nCached: 4 kB\nShmem: 8 kB\n", 0, page);
  EXPECT_EQ(counters->external_page_count, 0U);
}

TEST(MachineMemory, OlderKernelsReclaimableSlabsStandIn) {
  const auto counters = parsePageCounters("MemTotal: 999 kB\nSReclaimable: 8 kB\n", 0, page);
  EXPECT_EQ(counters->external_page_count, 2U);
}

TEST(MachineMemory, WithoutATotalThereAreNoCounters) {
  EXPECT_FALSE(parsePageCounters("MemFree: 100 kB\n", 0, page).has_value());
  EXPECT_FALSE(parsePageCounters("MemTotal: 0 kB\n", 0, page).has_value());
  EXPECT_FALSE(parseSwapUsage("SwapFree: 100 kB\n", page).has_value());
  EXPECT_EQ(parsePercentFree("MemAvailable: 1 kB\n"), std::nullopt);
  EXPECT_EQ(parsePercentFree("MemTotal: 0 kB\nMemAvailable: 1 kB\n"), std::nullopt);
  EXPECT_EQ(parsePercentFree("MemTotal: 5 kB\n"), std::nullopt);
}

TEST(MachineMemory, CountersBeyondTheirFieldStayAtItsEnd) {
  const auto counters =
      parsePageCounters("MemTotal: 999 kB\nAnonPages: 18014398509481983 kB\n", 0, page);
  EXPECT_EQ(counters->internal_page_count, 0xFFFFFFFFU);
}

TEST(MachineMemory, FreeSwapAboveTheTotalIsNoSwapInUse) {
  const auto usage = parseSwapUsage("SwapTotal: 100 kB\nSwapFree: 200 kB\n", page);
  EXPECT_EQ(usage->xsu_used, 0U);
  EXPECT_EQ(usage->xsu_avail, 100U * 1024);
}

TEST(MachineMemory, PercentFreeIsCut) {
  EXPECT_EQ(parsePercentFree("MemTotal: 1000 kB\nMemAvailable: 49 kB\n"), 4);
  EXPECT_EQ(parsePercentFree("MemTotal: 1000 kB\nMemAvailable: 2000 kB\n"), 100);
}

TEST(MachineMemory, CompressedSwapIsTheThirdColumn) {
  EXPECT_EQ(parseZramBytes("  1  2  3 4\n"), 3U);
  EXPECT_EQ(parseZramBytes(""), 0U);
  EXPECT_EQ(parseZramBytes("1 2"), 0U);
}

std::string stalls(const std::string& some, const std::string& full) {
  return "some avg10=" + some + " avg60=90.00 avg300=90.00 total=1\nfull avg10=" + full +
         " avg60=90.00 avg300=90.00 total=1\n";
}

TEST(MachinePressure, WithoutStallsFreeMemoryDecides) {
  EXPECT_EQ(memoryPressureLevel(4, ""), 4);
  EXPECT_EQ(memoryPressureLevel(5, ""), 2);
  EXPECT_EQ(memoryPressureLevel(9, ""), 2);
  EXPECT_EQ(memoryPressureLevel(10, ""), 1);
}

TEST(MachinePressure, FullStallsFromTenPercentAreCritical) {
  EXPECT_EQ(memoryPressureLevel(90, stalls("0.00", "9.99")), 1);
  EXPECT_EQ(memoryPressureLevel(90, stalls("0.00", "10.00")), 4);
}

TEST(MachinePressure, SomeStallsFromTenPercentWarnOnlyBelowAQuarterFree) {
  EXPECT_EQ(memoryPressureLevel(24, stalls("10.00", "0.00")), 2);
  EXPECT_EQ(memoryPressureLevel(24, stalls("9.99", "0.00")), 1);
  EXPECT_EQ(memoryPressureLevel(25, stalls("99.00", "0.00")), 1);
}

TEST(MachinePressure, DamagedStallsCountAsNone) {
  EXPECT_EQ(memoryPressureLevel(20, "some\nfull avg10=\n"), 1);
  EXPECT_EQ(memoryPressureLevel(20, "some avg60=99.00\n"), 1);
}

TEST(MachineDiskStatistics, DamagedAndCutLinesAreLeftOut) {
  EXPECT_THAT(parseDiskStatistics("8 0 sda 1 2 3 4 5 6 7"), IsEmpty());
  EXPECT_THAT(parseDiskStatistics("\n8 0 sda 1 2 x 4 5 6 7\n8 0 sda 1 2 3\n"), IsEmpty());
  EXPECT_THAT(parseDiskStatistics("8 0 sda 1 2 3 4 5 6 7 8\n"),
              ElementsAre(BlockDeviceCounters{"sda", 3 * 512, 7 * 512}));
}

TEST(MachineDiskStatistics, NamesOfWholeDisks) {
  for (const char* const name :
       {"sda", "sdab", "hda", "vda", "xvda", "nvme0n1", "nvme12n34", "mmcblk0"}) {
    EXPECT_TRUE(isWholeDiskName(name)) << name;
  }
  for (const char* const name :
       {"", "sd", "sda1", "vda2", "xvda1", "nvme0n1p1", "nvme0c0n1", "nvme", "nvme0", "mmcblk0p1",
        "mmcblk0boot0", "mmcblk", "loop0", "dm-0", "md0", "zram0", "sr0", "ram0"}) {
    EXPECT_FALSE(isWholeDiskName(name)) << name;
  }
}

TEST(MachineNetworkTable, DamagedAndCutLinesAreLeftOut) {
  EXPECT_THAT(parseNetworkDeviceTable("eth0: 1 2 3 4 5 6 7 8 9 10\n eth1: 1 2\nno colon\n: 1\n"
                                      "eth2: 1 2 3 4 5 6 7 8 9"),
              ElementsAre(LinkCounters{"eth0", 1, 0, 1, 9}));
}

TEST(MachineNetworkTable, AnAliasKeepsItsColon) {
  EXPECT_THAT(parseNetworkDeviceTable("eth0:1:5 2 3 4 5 6 7 8 9 10\n"),
              ElementsAre(LinkCounters{"eth0:1", 1, 0, 5, 9}));
}

TEST(MachineProcessorList, RangesAndSingleNumbers) {
  EXPECT_THAT(parseProcessorList("0-2,5,7-8"), ElementsAre(0, 1, 2, 5, 7, 8));
  EXPECT_THAT(parseProcessorList("3"), ElementsAre(3));
}

TEST(MachineProcessorList, DamagedListsAreEmpty) {
  for (const char* const text :
       {"", "x", "0-", "-3", "0,,1", "0-99999999", "1 2", "18446744073709551615"}) {
    EXPECT_THAT(parseProcessorList(text), IsEmpty()) << text;
  }
}

}  // namespace
}  // namespace korvantis
