#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/MachineTree.h"

namespace korvantis {
namespace {

using test::coreTicks;
using test::diskCounters;
using test::int32Figure;
using test::interfaceMessages;
using test::MachineTree;
using test::pageCounters;
using test::textFigure;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::uint32_t pagesOf(std::uint64_t kilobytes) {
  return static_cast<std::uint32_t>(kilobytes * 1024 /
                                    static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)));
}

TEST(MachineRecordedLaptop, TicksAreFoldedIntoFourClasses) {
  MachineTree tree;
  tree.makeLaptop();
  const auto cores = coreTicks(tree.calls());
  ASSERT_EQ(cores.size(), 2U);
  EXPECT_THAT(cores[0].cpu_ticks, ElementsAre(10, 12, 110, 1));
  EXPECT_THAT(cores[1].cpu_ticks, ElementsAre(20, 24, 220, 2));
}

TEST(MachineRecordedLaptop, PageCountersFollowFromTheMemoryText) {
  MachineTree tree;
  tree.makeLaptop();
  const auto counters = pageCounters(tree.calls());
  ASSERT_TRUE(counters.has_value());
  EXPECT_EQ(counters->internal_page_count, pagesOf(5000000));
  EXPECT_EQ(counters->purgeable_count, 0U);
  EXPECT_EQ(counters->external_page_count, pagesOf(4400000));
  EXPECT_EQ(counters->compressor_page_count, pagesOf(50400));
  EXPECT_EQ(counters->wire_count, pagesOf(4549600));
}

TEST(MachineRecordedLaptop, SwapPressureAndLoadAreTold) {
  MachineTree tree;
  tree.makeLaptop();
  const PlatformCalls calls = tree.calls();
  xsw_usage usage{};
  std::size_t size = sizeof usage;
  ASSERT_EQ(calls.sysctl.sysctlbyname("vm.swapusage", &usage, &size), 0);
  EXPECT_EQ(size, 32U);
  EXPECT_EQ(usage.xsu_total, 4000000U * 1024);
  EXPECT_EQ(usage.xsu_used, 1000000U * 1024);
  EXPECT_EQ(usage.xsu_avail, 3000000U * 1024);
  EXPECT_EQ(int32Figure(calls, "kern.memorystatus_level"), 50);
  EXPECT_EQ(int32Figure(calls, "kern.memorystatus_vm_pressure_level"), 1);
  std::array<double, 3> averages{};
  EXPECT_EQ(calls.posix.getloadavg(averages.data(), 3), 3);
  EXPECT_THAT(averages, ElementsAre(0.25, 1.5, 3.0));
}

TEST(MachineRecordedLaptop, AlikeCoresAreAllPerformanceCoresWithZeroEfficiencyCores) {
  MachineTree tree;
  tree.makeLaptop();
  const PlatformCalls calls = tree.calls();
  EXPECT_EQ(textFigure(calls, "machdep.cpu.brand_string"), "Some Processor @ 2.00GHz");
  EXPECT_EQ(int32Figure(calls, "hw.logicalcpu"), 8);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel0.physicalcpu"), 4);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel1.physicalcpu"), 0);
}

TEST(MachineRecordedLaptop, OnlyDisksCountNotPartitionsMappingsLoopsOrCompressedSwap) {
  MachineTree tree;
  tree.makeLaptop();
  EXPECT_THAT(diskCounters(tree.calls()),
              ElementsAre(Pair(2000 * 512, 4000 * 512), Pair(100 * 512, 200 * 512)));
}

TEST(MachineRecordedLaptop, AHiddenPathToADiskDoesNotCount) {
  MachineTree tree;
  tree.makeLaptop();
  tree.write("sys/block/sda/hidden", "1\n");
  EXPECT_THAT(diskCounters(tree.calls()), ElementsAre(Pair(2000 * 512, 4000 * 512)));
}

TEST(MachineRecordedLaptop, OnlyInterfacesThatAreDevicesCount) {
  MachineTree tree;
  tree.makeLaptop();
  const auto messages = interfaceMessages(tree.calls());
  ASSERT_TRUE(messages.has_value());
  ASSERT_EQ(messages->size(), 1U);
  const if_msghdr2& wireless = messages->front();
  EXPECT_EQ(wireless.ifm_msglen, 160);
  EXPECT_EQ(wireless.ifm_type, RTM_IFINFO2);
  EXPECT_EQ(wireless.ifm_index, 2);
  EXPECT_EQ(wireless.ifm_flags & (DARWIN_IFF_UP | DARWIN_IFF_LOOPBACK), DARWIN_IFF_UP);
  EXPECT_EQ(wireless.ifm_data.ifi_ibytes, 3000U);
  EXPECT_EQ(wireless.ifm_data.ifi_obytes, 200U);
}

TEST(MachineRecordedLaptop, SizeAndListShareOneDump) {
  MachineTree tree;
  tree.makeLaptop();
  const PlatformCalls calls = tree.calls();
  interfaceMessages(calls);
  EXPECT_EQ(tree.dumps, 1);
  interfaceMessages(calls);
  EXPECT_EQ(tree.dumps, 2);
}

TEST(MachineRecordedLaptop, AListWithoutAnAskedSizeIsDumpedAndOneThatDoesNotFitFails) {
  MachineTree tree;
  tree.makeLaptop();
  const PlatformCalls calls = tree.calls();
  constexpr std::array name{CTL_NET, DARWIN_PF_ROUTE, 0, 0, NET_RT_IFLIST2, 0};
  std::array<std::byte, 160> buffer{};
  std::size_t size = 159;
  EXPECT_EQ(calls.sysctl.sysctl(name.data(), 6, buffer.data(), &size), -1);
  size = 160;
  EXPECT_EQ(calls.sysctl.sysctl(name.data(), 6, buffer.data(), &size), 0);
  EXPECT_EQ(size, 160U);
  EXPECT_EQ(tree.dumps, 2);
}

TEST(MachineRecordedLaptop, DevicesAreLookedForAgainOnlyWhenNamesChangeOrAfter25Seconds) {
  MachineTree tree;
  tree.makeLaptop();
  const PlatformCalls calls = tree.calls();
  EXPECT_EQ(diskCounters(calls).size(), 2U);
  EXPECT_EQ(interfaceMessages(calls)->size(), 1U);
  tree.remove("sys/block/sda/device");
  tree.write("sys/class/net/br0/device/vendor", "0x1\n");
  tree.seconds += 24.9;
  EXPECT_EQ(diskCounters(calls).size(), 2U);
  EXPECT_EQ(interfaceMessages(calls)->size(), 1U);
  tree.seconds += 0.1;
  EXPECT_EQ(diskCounters(calls).size(), 1U);
  EXPECT_EQ(interfaceMessages(calls)->size(), 2U);
  tree.links->push_back({"wlan1", 4, 0x1, 1, 1});
  tree.write("sys/class/net/wlan1/device/vendor", "0x1\n");
  EXPECT_EQ(interfaceMessages(calls)->size(), 3U);
}

TEST(MachineRecordedContainer, WithoutDevicesEveryInterfaceIsListedWithItsFlags) {
  MachineTree tree;
  tree.makeContainer();
  const auto messages = interfaceMessages(tree.calls());
  ASSERT_TRUE(messages.has_value());
  ASSERT_EQ(messages->size(), 2U);
  EXPECT_NE(messages->at(0).ifm_flags & DARWIN_IFF_LOOPBACK, 0);
  EXPECT_EQ(messages->at(1).ifm_data.ifi_ibytes, 700U);
}

TEST(MachineRecordedContainer, WithoutADumpTheDeviceTableIsRead) {
  MachineTree tree;
  tree.makeContainer();
  tree.links = std::nullopt;
  EXPECT_EQ(interfaceMessages(tree.calls()), std::nullopt);
  tree.write("proc/net/dev",
             "Inter-|   Receive                            |  Transmit\n"
             " face |bytes    packets errs drop fifo frame compressed multicast|bytes\n"
             "    lo:     10 1 0 0 0 0 0 0     10 1 0 0 0 0 0 0\n"
             "  eth0:700 7 0 0 0 0 0 0 90 1 0 0 0 0 0 0\n"
             "  eth1:900 7 0 0 0 0 0 0 80 1 0 0 0 0 0 0\n");
  tree.write("sys/class/net/eth1/flags", "0x1002\n");
  const auto messages = interfaceMessages(tree.calls());
  ASSERT_TRUE(messages.has_value());
  ASSERT_EQ(messages->size(), 3U);
  EXPECT_EQ(messages->at(0).ifm_flags, DARWIN_IFF_UP | DARWIN_IFF_LOOPBACK);
  EXPECT_EQ(messages->at(1).ifm_flags, DARWIN_IFF_UP);
  EXPECT_EQ(messages->at(1).ifm_data.ifi_ibytes, 700U);
  EXPECT_EQ(messages->at(1).ifm_data.ifi_obytes, 90U);
  EXPECT_EQ(messages->at(2).ifm_flags & DARWIN_IFF_UP, 0);
}

TEST(MachineRecordedContainer, WhatNoSourceTellsFails) {
  MachineTree tree;
  tree.makeContainer();
  const PlatformCalls calls = tree.calls();
  EXPECT_EQ(calls.ioRegistry.matchingServices("IOBlockStorageDriver").has_value(), false);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel0.physicalcpu"), std::nullopt);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel1.physicalcpu"), std::nullopt);
  EXPECT_EQ(int32Figure(calls, "hw.unknown"), std::nullopt);
}

TEST(MachineRecordedContainer, WhatProcTellsIsThere) {
  MachineTree tree;
  tree.makeContainer();
  const PlatformCalls calls = tree.calls();
  EXPECT_EQ(int32Figure(calls, "hw.logicalcpu"), 1);
  EXPECT_EQ(textFigure(calls, "machdep.cpu.brand_string"), "Some Processor");
  // Without stall figures free memory alone decides.
  EXPECT_EQ(int32Figure(calls, "kern.memorystatus_vm_pressure_level"), 1);
  EXPECT_EQ(pageCounters(calls)->compressor_page_count, pagesOf(50000));
}

TEST(MachineRecordedContainer, WithoutSysfsDisksAreToldByTheirNames) {
  MachineTree tree;
  tree.makeContainer();
  tree.write("proc/diskstats",
             "   8       0 sda 10 0 100 0 20 0 200 0 0 0 0\n"
             "   8       1 sda1 10 0 100 0 20 0 200 0 0 0 0\n"
             " 253       0 dm-0 10 0 100 0 20 0 200 0 0 0 0\n");
  EXPECT_THAT(diskCounters(tree.calls()), ElementsAre(Pair(100 * 512, 200 * 512)));
}

TEST(MachineRecordedEmptyTree, EveryOperationFailsAndNoneIsInvented) {
  MachineTree tree;
  const PlatformCalls calls = tree.calls();
  EXPECT_THAT(coreTicks(calls), IsEmpty());
  EXPECT_FALSE(pageCounters(calls).has_value());
  EXPECT_EQ(interfaceMessages(calls), std::nullopt);
  for (const char* const name :
       {"vm.swapusage", "kern.memorystatus_level", "kern.memorystatus_vm_pressure_level",
        "hw.logicalcpu", "hw.perflevel0.physicalcpu", "machdep.cpu.brand_string"}) {
    std::array<char, 256> buffer{};
    std::size_t size = buffer.size();
    EXPECT_EQ(calls.sysctl.sysctlbyname(name, buffer.data(), &size), -1) << name;
  }
  std::array<double, 3> averages{7, 7, 7};
  EXPECT_EQ(calls.posix.getloadavg(averages.data(), 3), -1);
  EXPECT_THAT(averages, ElementsAre(7, 7, 7));
  EXPECT_EQ(calls.ioRegistry.matchingServices("IOAccelerator")->size(), 0U);
}

TEST(MachineRecordedBoard, TheBoardsModelStandsForAProcessorWithoutAName) {
  MachineTree tree;
  tree.makeBigLittleBoard();
  EXPECT_EQ(textFigure(tree.calls(), "machdep.cpu.brand_string"), "Some Board Rev 2");
}

TEST(MachineRecordedBoard, TheLeastCapableCoresAreTheEfficiencyCores) {
  MachineTree tree;
  tree.makeBigLittleBoard();
  const PlatformCalls calls = tree.calls();
  EXPECT_EQ(int32Figure(calls, "hw.logicalcpu"), 6);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel0.physicalcpu"), 2);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel1.physicalcpu"), 4);
}

TEST(MachineRecordedBoard, EqualCapacitiesMakeNoEfficiencyCores) {
  MachineTree tree;
  tree.makeBigLittleBoard();
  for (int number = 0; number < 4; ++number) {
    tree.write("sys/devices/system/cpu/cpu" + std::to_string(number) + "/cpu_capacity", "1024\n");
  }
  EXPECT_EQ(int32Figure(tree.calls(), "hw.perflevel0.physicalcpu"), 6);
  EXPECT_EQ(int32Figure(tree.calls(), "hw.perflevel1.physicalcpu"), 0);
}

TEST(MachineRecordedHybrid, BothKindsAreCountedByPhysicalCores) {
  MachineTree tree;
  tree.makeHybrid();
  const PlatformCalls calls = tree.calls();
  EXPECT_EQ(int32Figure(calls, "hw.logicalcpu"), 8);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel0.physicalcpu"), 2);
  EXPECT_EQ(int32Figure(calls, "hw.perflevel1.physicalcpu"), 4);
}

TEST(MachineRecorded, OtherQuestionsOfSysctlGoToWhoAnsweredThemBefore) {
  MachineTree tree;
  PlatformCalls calls;
  calls.sysctl.sysctl = [](const int*, unsigned, void*, std::size_t*) { return 42; };
  addMachineCalls(calls, MachineSources{"", [] { return 0.0; }, [] { return std::nullopt; }});
  const std::array name{CTL_KERN, KERN_PROCARGS2, 1};
  std::size_t size = 0;
  EXPECT_EQ(calls.sysctl.sysctl(name.data(), 3, nullptr, &size), 42);
  EXPECT_EQ(tree.calls().sysctl.sysctl(name.data(), 3, nullptr, &size), -1);
}

TEST(MachineRecorded, WrongFlavorsAndSmallBuffersFail) {
  MachineTree tree;
  tree.makeLaptop();
  const PlatformCalls calls = tree.calls();
  std::uint32_t count = 0;
  std::uint32_t words = 0;
  std::int32_t* reply = nullptr;
  EXPECT_NE(calls.machHost.host_processor_info(1, &count, &reply, &words), 0);
  EXPECT_EQ(reply, nullptr);
  std::array<std::int32_t, 104> buffer{};
  words = 37;
  EXPECT_NE(calls.machHost.host_statistics64(HOST_VM_INFO64, buffer.data(), &words), 0);
  words = 104;
  EXPECT_NE(calls.machHost.host_statistics64(2, buffer.data(), &words), 0);
  std::int16_t small = 0;
  std::size_t size = sizeof small;
  EXPECT_EQ(calls.sysctl.sysctlbyname("hw.logicalcpu", &small, &size), -1);
}

}  // namespace
}  // namespace korvantis
