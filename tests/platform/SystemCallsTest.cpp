#include <array>
#include <cstdint>
#include <ctime>
#include <gmock/gmock.h>
#include <unistd.h>
#include <vector>

#include "platform/PlatformCalls.h"
#include "platform/ProcessStart.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using testing::Contains;

TEST(SystemCalls, TheClockTellsSecondsSince1970) {
  const double before = static_cast<double>(std::time(nullptr));
  const double now = systemClock().now();
  EXPECT_GE(now, before);
  EXPECT_LT(now, before + 60);
}

TEST(SystemCalls, RandomBytesFillTheWholeBufferAndDiffer) {
  std::array<std::uint8_t, 4096> first{};
  std::array<std::uint8_t, 4096> second{};
  systemRandomCalls().fill(first.data(), first.size() - 1);
  systemRandomCalls().fill(second.data(), second.size());
  EXPECT_NE(first, second);
  EXPECT_EQ(first.back(), 0) << "no byte too many";
  const std::vector<std::uint8_t> end(second.end() - 64, second.end());
  EXPECT_NE(end, std::vector<std::uint8_t>(64, 0)) << "the end is filled too";
  systemRandomCalls().fill(nullptr, 0);
}

TEST(SystemCalls, InstalledMemoryIsKnown) {
  EXPECT_GT(systemProcessInfoCalls().physicalMemory(), 1'000'000U);
}

TEST(SystemCalls, EveryProcessOperationReachesTheRunningSystem) {
  const PlatformCalls calls = systemPlatformCalls();
  EXPECT_EQ(calls.posix.getuid(), ::getuid());
  std::vector<std::int32_t> pids(4096);
  const int filled = calls.libProc.proc_listallpids(pids.data(), 16384);
  ASSERT_GT(filled, 0);
  pids.resize(static_cast<std::size_t>(filled) / 4);
  EXPECT_THAT(pids, Contains(::getpid()));

  const int self = ::getpid();
  proc_bsdinfo basic{};
  rusage_info_v4 usage{};
  std::array<char, 4096> path{};
  std::array<proc_fdinfo, 128> descriptors{};
  EXPECT_EQ(calls.libProc.proc_pidinfo(self, PROC_PIDTBSDINFO, 0, &basic, sizeof basic), 136);
  EXPECT_EQ(calls.libProc.proc_pid_rusage(self, RUSAGE_INFO_V4, &usage), 0);
  EXPECT_GT(usage.ri_phys_footprint, 0U);
  EXPECT_GT(calls.libProc.proc_pidpath(self, path.data(), 4096), 0);
  EXPECT_LT(calls.libProc.proc_pidfdinfo(self, 99'999, PROC_PIDFDSOCKETINFO, path.data(), 792), 1);
  EXPECT_GE(calls.libProc.proc_pidinfo(self, PROC_PIDLISTFDS, 0, descriptors.data(), 1024), 0);
  EXPECT_GE(calls.libProc.responsibility_get_pid_responsible_for_pid(self), 0);
  const std::array<int, 3> name{CTL_KERN, KERN_PROCARGS2, self};
  std::size_t size = 0;
  EXPECT_EQ(calls.sysctl.sysctl(name.data(), 3, nullptr, &size), 0);
  EXPECT_GT(size, 5U);
  EXPECT_EQ(calls.posix.kill(self, 0), 0);
  EXPECT_EQ(calls.posix.kill(0, 0), -1);
}

TEST(SystemCalls, TimesAreNanoseconds) {
  mach_timebase_info_data_t base{0, 0};
  EXPECT_EQ(systemPlatformCalls().machHost.mach_timebase_info(&base), 0);
  EXPECT_EQ(base.numer, 1U);
  EXPECT_EQ(base.denom, 1U);
}

TEST(SystemCalls, NoApplicationCanBeAskedToQuit) {
  const PlatformCalls calls = systemPlatformCalls();
  const auto& running = calls.runningApplications;
  EXPECT_TRUE(running.runningApplicationsWithBundleIdentifier("org.example.any").empty());
  EXPECT_FALSE(running.runningApplicationWithProcessIdentifier(::getpid()));
}

TEST(SystemCalls, PropertyListsAreRead) {
  const test::TemporaryFolder folder;
  const std::string file = folder.write(
      "Info.plist", "<plist version=\"1.0\"><dict><key>a</key><string>b</string></dict></plist>");
  const PlatformCalls calls = systemPlatformCalls();
  const auto map = calls.propertyLists.dictionaryWithContentsOfFile(file);
  ASSERT_TRUE(map);
  EXPECT_EQ(textProperty(*map, "a"), "b");
  EXPECT_FALSE(calls.propertyLists.dictionaryWithContentsOfFile(folder.path("missing")));
}

TEST(SystemProcessStart, IsTheOneThatTheProcessRecordTells) {
  const PlatformCalls calls = systemPlatformCalls();
  proc_bsdinfo record{};
  ASSERT_EQ(calls.libProc.proc_pidinfo(::getpid(), PROC_PIDTBSDINFO, 0, &record, sizeof record),
            static_cast<int>(sizeof record));
  EXPECT_EQ(systemProcessStart(::getpid()), static_cast<double>(record.pbi_start_tvsec));
  EXPECT_EQ(systemProcessStart(0), std::nullopt);
  EXPECT_EQ(systemProcessStart(-5), std::nullopt);
}

}  // namespace
}  // namespace korvantis
