#include <array>
#include <atomic>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sstream>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/MachineTree.h"
#include "platform/linux/FileText.h"
#include "platform/linux/NetworkDeviceTable.h"
#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

using test::coreTicks;
using test::int32Figure;
using test::interfaceMessages;
using test::pageCounters;

std::string textOf(const std::string& path) {
  return readFileText(AT_FDCWD, path).text;
}

/// The figure of one key of the memory text, in bytes.
std::uint64_t memoryBytes(const std::string& text, const std::string& name) {
  return kilobytesField(text, name).value_or(0);
}

TEST(MachineLive, TicksLieBetweenTwoReadingsOfTheSameFile) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto before = coreTicks(calls);
  std::string text = textOf("/proc/stat");
  const auto after = coreTicks(calls);
  ASSERT_FALSE(before.empty());
  ASSERT_EQ(before.size(), after.size());
  std::istringstream lines(text);
  std::string line;
  std::getline(lines, line);
  for (std::size_t core = 0; core < before.size(); ++core) {
    std::getline(lines, line);
    std::istringstream words(line);
    std::string label;
    std::uint64_t user = 0;
    std::uint64_t nice = 0;
    words >> label >> user >> nice;
    ASSERT_EQ(label, "cpu" + std::to_string(core));
    EXPECT_LE(before[core].cpu_ticks[CPU_STATE_USER], user);
    EXPECT_GE(after[core].cpu_ticks[CPU_STATE_USER], user);
    EXPECT_LE(before[core].cpu_ticks[CPU_STATE_NICE], nice);
    EXPECT_GE(after[core].cpu_ticks[CPU_STATE_NICE], nice);
  }
}

TEST(MachineLive, ABurntCoreShowsInTheTicks) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto busyTicks = [&] {
    std::uint64_t sum = 0;
    for (const auto& core : coreTicks(calls)) {
      sum += core.cpu_ticks[CPU_STATE_USER] + core.cpu_ticks[CPU_STATE_NICE] +
             core.cpu_ticks[CPU_STATE_SYSTEM];
    }
    return sum;
  };
  const std::uint64_t before = busyTicks();
  // Until this thread itself has burnt a quarter of a second, however busy the machine is.
  timespec spent{};
  do {
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
  } while (spent.tv_sec == 0 && spent.tv_nsec < 250'000'000);
  EXPECT_GE(busyTicks() - before, 15U);
}

TEST(MachineLive, MemoryIsAccountedForInFull) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto counters = pageCounters(calls);
  const std::string text = textOf("/proc/meminfo");
  ASSERT_TRUE(counters.has_value());
  const auto page = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
  const std::uint64_t total = memoryBytes(text, "MemTotal");
  EXPECT_EQ(calls.processInfo.physicalMemory(), total);
  const std::uint64_t sum =
      (std::uint64_t{counters->internal_page_count} + counters->external_page_count +
       counters->wire_count + counters->compressor_page_count + counters->free_count) *
      page;
  EXPECT_NEAR(static_cast<double>(sum), static_cast<double>(total),
              static_cast<double>(total) / 50);
  // Two readings of a living system: within a tenth of the whole.
  const std::uint64_t app = memoryBytes(text, "AnonPages") + memoryBytes(text, "Shmem");
  EXPECT_NEAR(static_cast<double>(counters->internal_page_count * page), static_cast<double>(app),
              static_cast<double>(total) / 10);
}

TEST(MachineLive, FreeMemoryAndSwapAgreeWithTheMemoryText) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto percent = int32Figure(calls, "kern.memorystatus_level");
  const std::string text = textOf("/proc/meminfo");
  ASSERT_TRUE(percent.has_value());
  EXPECT_NEAR(*percent,
              static_cast<double>(memoryBytes(text, "MemAvailable")) * 100 /
                  static_cast<double>(memoryBytes(text, "MemTotal")),
              10);
  xsw_usage usage{};
  std::size_t size = sizeof usage;
  ASSERT_EQ(calls.sysctl.sysctlbyname("vm.swapusage", &usage, &size), 0);
  EXPECT_EQ(usage.xsu_total, memoryBytes(text, "SwapTotal"));
  EXPECT_EQ(usage.xsu_used + usage.xsu_avail, usage.xsu_total);
}

TEST(MachineLive, InterfaceCountersLieBetweenTwoReadingsOfTheDeviceTable) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto before = parseNetworkDeviceTable(textOf("/proc/net/dev"));
  const auto messages = interfaceMessages(calls);
  const auto after = parseNetworkDeviceTable(textOf("/proc/net/dev"));
  ASSERT_TRUE(messages.has_value());
  ASSERT_EQ(before.size(), after.size());
  for (const if_msghdr2& message : *messages) {
    std::array<char, IF_NAMESIZE> name{};
    ASSERT_NE(::if_indextoname(message.ifm_index, name.data()), nullptr);
    const auto& data = message.ifm_data;
    std::size_t row = 0;
    while (row < before.size() && before[row].name != name.data()) ++row;
    ASSERT_LT(row, before.size()) << name.data();
    EXPECT_LE(before[row].receivedBytes, data.ifi_ibytes);
    EXPECT_GE(after[row].receivedBytes, data.ifi_ibytes);
    EXPECT_LE(before[row].sentBytes, data.ifi_obytes);
    EXPECT_GE(after[row].sentBytes, data.ifi_obytes);
  }
}

TEST(MachineLive, TheRootVolumeIsThatOfStatvfs) {
  struct statvfs volume {};
  ASSERT_EQ(::statvfs("/", &volume), 0);
  const auto values = systemPlatformCalls().volumes.resourceValues("/");
  ASSERT_TRUE(values.has_value());
  EXPECT_EQ(values->totalCapacity, static_cast<std::int64_t>(volume.f_blocks * volume.f_frsize));
  // Neighbours write while the two are read.
  EXPECT_NEAR(static_cast<double>(values->availableCapacityForImportantUsage.value()),
              static_cast<double>(volume.f_bavail * volume.f_frsize),
              static_cast<double>(volume.f_blocks * volume.f_frsize) / 100);
  EXPECT_FALSE(systemPlatformCalls().volumes.resourceValues("/no such folder").has_value());
}

TEST(MachineLive, CoresAndProcessorCountAgree) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto logical = int32Figure(calls, "hw.logicalcpu");
  ASSERT_TRUE(logical.has_value());
  EXPECT_EQ(*logical, calls.processInfo.processorCount());
  EXPECT_EQ(static_cast<std::size_t>(*logical), coreTicks(calls).size());
}

TEST(MachineLive, LoadAveragesAreThoseOfTheKernel) {
  std::array<double, 3> averages{-1, -1, -1};
  ASSERT_EQ(systemPlatformCalls().posix.getloadavg(averages.data(), 3), 3);
  std::array<double, 3> expected{};
  ASSERT_EQ(::getloadavg(expected.data(), 3), 3);
  EXPECT_NEAR(averages[2], expected[2], 2.0);
}

TEST(MachineLive, AUserWithoutRightsGetsTheSameFigures) {
  const pid_t child = ::fork();
  if (child == 0) {
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(2);
    const PlatformCalls calls = systemPlatformCalls();
    const bool complete = !coreTicks(calls).empty() && pageCounters(calls).has_value() &&
                          interfaceMessages(calls).has_value() &&
                          int32Figure(calls, "kern.memorystatus_level").has_value() &&
                          calls.volumes.resourceValues("/").has_value();
    ::_exit(complete ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(MachineConcurrent, TwoThreadsMayAskAtOnce) {
  const PlatformCalls calls = systemPlatformCalls();
  std::atomic<int> wrong = 0;
  const auto work = [&] {
    for (int round = 0; round < 50; ++round) {
      const auto messages = interfaceMessages(calls);
      if (coreTicks(calls).empty() || !pageCounters(calls) || !messages ||
          !int32Figure(calls, "kern.memorystatus_vm_pressure_level")) {
        ++wrong;
      }
      calls.ioRegistry.matchingServices("IOBlockStorageDriver");
    }
  };
  std::thread other(work);
  work();
  other.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace korvantis
