#include <gtest/gtest.h>
#include <string>

#include "platform/linux/ProcessStat.h"
#include "support/RecordedProcesses.h"

namespace korvantis {
namespace {

using test::RecordedProcess;
using test::RecordedProcesses;

std::string textWithName(const std::string& name) {
  RecordedProcess process;
  process.pid = 42;
  process.name = name;
  process.parent = 7;
  process.session = 9;
  process.startTicks = 123456;
  process.userTicks = 11;
  process.systemTicks = 22;
  process.switches = {1, 2, 3};
  return RecordedProcesses::statText(process);
}

TEST(ProcessStat, ReadsEveryFigure) {
  const ProcessStat expected{.pid = 42,
                             .name = "bash",
                             .state = 'S',
                             .parent = 7,
                             .group = 42,
                             .session = 9,
                             .isKernelThread = false,
                             .userTicks = 11,
                             .systemTicks = 22,
                             .nice = 0,
                             .threadCount = 3,
                             .startTicks = 123456,
                             .residentPages = 250};
  EXPECT_EQ(parseProcessStat(textWithName("bash")), expected);
}

TEST(ProcessStat, TheNameEndsAtTheLastParenthesisWhateverBytesItHolds) {
  for (const std::string name : {"", ")", "(", "a) b (c", ") S 1 1 1 (", "a\nb", "caf\xc3", "\xff",
                                 "((sd-pam))", "  ", "a b", "12 (34) R 5"}) {
    const auto stat = parseProcessStat(textWithName(name));
    ASSERT_TRUE(stat) << name;
    EXPECT_EQ(stat->name, name);
    EXPECT_EQ(stat->parent, 7) << name;
    EXPECT_EQ(stat->startTicks, 123456U) << name;
  }
}

TEST(ProcessStat, EveryCutTextIsRefusedUntilTheStartTimeIsWhole) {
  const std::string whole = textWithName("a) b");
  const std::size_t end = whole.find(" 123456 ") + 8;
  for (std::size_t length = 0; length < end; ++length) {
    EXPECT_FALSE(parseProcessStat(std::string_view(whole).substr(0, length))) << length;
  }
  for (std::size_t length = end; length <= whole.size(); ++length) {
    EXPECT_TRUE(parseProcessStat(std::string_view(whole).substr(0, length))) << length;
  }
}

TEST(ProcessStat, GarbageIsRefused) {
  for (const char* text :
       {"", "42", "42 bash S", ")(", "42 )bash( S 1", "(bash) S 1 2 3 4 5 6 7 8 9 10 11 12 13",
        "x (bash) S 7 42 9 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 5 0\n",
        "42 (bash) SS 7 42 9 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 5 0\n",
        "42 (bash) S x 42 9 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 5 0\n",
        "42 (bash) S 7 42 9 0 -1 -5 0 0 0 0 1 1 0 0 20 0 1 0 5 0\n",
        "42 (bash) S 7 42 9 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 -5 0\n",
        "99999999999 (bash) S 7 42 9 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 5 0\n",
        "42 (bash) S 4294967296 42 9 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 5 0\n"}) {
    EXPECT_FALSE(parseProcessStat(text)) << text;
  }
}

TEST(ProcessStat, TheLargestNumbersAreTaken) {
  const auto stat = parseProcessStat(
      "2147483647 (x) R 0 -1 -1 0 -1 0 0 0 0 0 18446744073709551615 18446744073709551615 0 0 20 "
      "-20 1 0 18446744073709551615 0\n");
  ASSERT_TRUE(stat);
  EXPECT_EQ(stat->pid, 2147483647);
  EXPECT_EQ(stat->userTicks, 18446744073709551615U);
  EXPECT_EQ(stat->startTicks, 18446744073709551615U);
  EXPECT_EQ(stat->nice, -20);
}

TEST(ProcessStat, KernelThreadsAreToldByTheirFlag) {
  RecordedProcess process;
  process.pid = 2;
  process.name = "kthreadd";
  process.isKernelThread = true;
  EXPECT_TRUE(parseProcessStat(RecordedProcesses::statText(process))->isKernelThread);
  process.isKernelThread = false;
  EXPECT_FALSE(parseProcessStat(RecordedProcesses::statText(process))->isKernelThread);
}

}  // namespace
}  // namespace korvantis
