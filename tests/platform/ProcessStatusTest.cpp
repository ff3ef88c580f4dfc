#include <gtest/gtest.h>
#include <string>

#include "platform/linux/ProcessDiskBytes.h"
#include "platform/linux/ProcessStatus.h"

namespace korvantis {
namespace {

constexpr std::string_view whole =
    "Name:\tUid:\t9\\nUid:\t8\nUmask:\t0022\nState:\tS (sleeping)\nTgid:\t42\nPid:\t43\n"
    "Uid:\t501\t502\t503\t504\nGid:\t20\t21\t22\t23\nVmRSS:\t  900 kB\nRssAnon:\t     300 kB\n"
    "VmSwap:\t      12 kB\nvoluntary_ctxt_switches:\t77\nnonvoluntary_ctxt_switches:\t99\n";

TEST(ProcessStatus, ReadsEveryFigure) {
  const ProcessStatus expected{.threadGroup = 42,
                               .users = {501, 502, 503, 504},
                               .groups = {20, 21, 22, 23},
                               .anonymousBytes = 300 * 1024,
                               .swapBytes = 12 * 1024,
                               .voluntarySwitches = 77};
  EXPECT_EQ(parseProcessStatus(whole), expected);
}

TEST(ProcessStatus, AZombieWithoutMemoryLinesHasNoMemory) {
  const auto status = parseProcessStatus("Tgid:\t1\nUid:\t0\t0\t0\t0\n");
  ASSERT_TRUE(status);
  EXPECT_EQ(status->anonymousBytes, 0U);
  EXPECT_EQ(status->swapBytes, 0U);
  EXPECT_EQ(status->voluntarySwitches, 0U);
}

TEST(ProcessStatus, WithoutAWholeOwnerOrThreadGroupItIsRefused) {
  for (const char* text :
       {"", "garbage", "Tgid:\t1\n", "Uid:\t0\t0\t0\t0\n", "Tgid:\t1\nUid:\t0\t0\t0\t0",
        "Tgid:\t1\nUid:\t0\t0\t0\n", "Tgid:\t1\nUid:\t0\t0\t0\t-1\n",
        "Tgid:\t1\nUid:\t0\t0\t0\t4294967296\n", "Tgid:\t2147483648\nUid:\t0\t0\t0\t0\n",
        "Tgid:\tx\nUid:\t0\t0\t0\t0\n"}) {
    EXPECT_FALSE(parseProcessStatus(text)) << text;
  }
}

TEST(ProcessStatus, EveryCutTextIsRefusedOrHasWholeFigures) {
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto status = parseProcessStatus(whole.substr(0, length));
    if (!status) continue;
    EXPECT_EQ(status->users[1], 502U);
    EXPECT_TRUE(status->anonymousBytes == 0 || status->anonymousBytes == 300 * 1024) << length;
    EXPECT_TRUE(status->voluntarySwitches == 0 || status->voluntarySwitches == 77) << length;
  }
}

TEST(ProcessDiskBytes, ReadsBothFigures) {
  EXPECT_EQ(parseProcessDiskBytes("rchar: 1\nread_bytes: 4096\nwrite_bytes: 8192\n"),
            (ProcessDiskBytes{4096, 8192}));
  EXPECT_EQ(parseProcessDiskBytes("read_bytes: 18446744073709551615\nwrite_bytes: 0\n"),
            (ProcessDiskBytes{18446744073709551615U, 0}));
}

TEST(ProcessDiskBytes, MissingCutOrDamagedFiguresAreRefused) {
  for (const char* text :
       {"", "read_bytes: 1\n", "write_bytes: 1\n", "read_bytes: 1\nwrite_bytes: 12",
        "read_bytes: x\nwrite_bytes: 1\n", "read_bytes: -1\nwrite_bytes: 1\n", "\xff\xfe"}) {
    EXPECT_FALSE(parseProcessDiskBytes(text)) << text;
  }
}

}  // namespace
}  // namespace korvantis
