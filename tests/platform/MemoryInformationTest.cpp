#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/MemoryInformation.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

TEST(MemoryInformation, InstalledMemoryIsTheTotalInBytes) {
  const test::TemporaryFolder root;
  root.write("proc/meminfo", "MemTotal:       16384000 kB\nMemFree:  1 kB\n");
  EXPECT_EQ(physicalMemoryBytes(root.path()), 16384000ULL * 1024);
}

TEST(MemoryInformation, MissingOrDamagedFiguresAreZero) {
  const test::TemporaryFolder root;
  EXPECT_EQ(physicalMemoryBytes(root.path()), 0U);
  for (const char* text : {"", "MemTotal: x kB\n", "MemTotal: 12", "MemFree: 1 kB\n"}) {
    root.write("proc/meminfo", text);
    EXPECT_EQ(physicalMemoryBytes(root.path()), 0U) << text;
  }
}

TEST(MemoryInformation, TheRunningMachineTells) {
  const auto pages = static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES));
  const auto pageSize = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
  EXPECT_EQ(physicalMemoryBytes(""), pages * pageSize);
}

}  // namespace
}  // namespace korvantis
