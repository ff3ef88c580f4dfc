#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "samplers/ProcessArguments.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

using test::argumentBlock;
using test::ProcessOperation;
using test::ScriptedProcess;
using test::ScriptedProcesses;
using Words = std::vector<std::string>;

/// A block from its parts: the count, then these bytes.
std::string rawBlock(std::int32_t count, const std::string& bytes) {
  return argumentBlock(count, "", {}).substr(0, 4) + bytes;
}

std::string bytes(const char* text, std::size_t size) {
  return {text, size};
}

/// What the arguments of a process with this block read as.
std::string argumentsOf(const ScriptedProcess& process) {
  ScriptedProcesses processes;
  processes.add(process);
  const PlatformCalls platform = processes.platform();
  const std::string arguments = readProcessArguments(platform.sysctl, process.pid, "fallback");
  EXPECT_TRUE(processes.complaints().empty());
  return arguments;
}

std::string argumentsOf(const std::string& block) {
  return argumentsOf(ScriptedProcess{.pid = 7, .argumentBlock = block});
}

TEST(ProcessArguments, WordsAreJoinedByOneBlank) {
  EXPECT_EQ(argumentsOf(argumentBlock(3, "/bin/tool", {"tool", "--port", "80"})), "tool --port 80");
}

TEST(ProcessArguments, TenArgumentsGiveTheFirstEightTheFirstBeingArgv0) {
  const Words words = {"argv0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
  EXPECT_EQ(argumentsOf(argumentBlock(10, "/bin/tool", words)), "argv0 1 2 3 4 5 6 7");
}

TEST(ProcessArguments, EnvironmentStringsAreNotReached) {
  EXPECT_EQ(argumentsOf(argumentBlock(2, "/bin/tool", {"tool", "x"}, {"SECRET=1"})), "tool x");
}

TEST(ProcessArguments, AHugeCountStopsAtEightWordsOrTheEndOfTheBlock) {
  EXPECT_EQ(argumentsOf(argumentBlock(0x7FFFFFFF, "/bin/tool", {"a", "b"})), "a b");
  const Words nine = {"1", "2", "3", "4", "5", "6", "7", "8", "9"};
  EXPECT_EQ(argumentsOf(argumentBlock(0x7FFFFFFF, "/bin/tool", nine)), "1 2 3 4 5 6 7 8");
}

TEST(ProcessArguments, ACountBelowOneFallsBack) {
  for (const std::int32_t count : {0, -1, static_cast<std::int32_t>(0x80000000U)}) {
    EXPECT_EQ(argumentsOf(argumentBlock(count, "/bin/tool", {"tool"})), "fallback") << count;
  }
}

TEST(ProcessArguments, TheCountIsLittleEndian) {
  const std::string block = bytes("\1\0\0\0/p\0a\0b\0", 11);
  EXPECT_EQ(argumentsOf(block), "a");
  // 1 at the high end is 16777216 words.
  EXPECT_EQ(argumentsOf(bytes("\0\0\0\1/p\0a\0b\0", 11)), "a b");
}

TEST(ProcessArguments, APathWithoutItsZeroByteFallsBack) {
  EXPECT_EQ(argumentsOf(rawBlock(1, "/bin/tool")), "fallback");
}

TEST(ProcessArguments, NothingButZerosAfterThePathFallsBack) {
  EXPECT_EQ(argumentsOf(rawBlock(1, bytes("/bin/tool\0\0\0\0", 13))), "fallback");
  EXPECT_EQ(argumentsOf(rawBlock(1, bytes("/bin/tool\0", 10))), "fallback");
}

TEST(ProcessArguments, NothingButZerosFallsBack) {
  EXPECT_EQ(argumentsOf(std::string(64, '\0')), "fallback");
  EXPECT_EQ(argumentsOf(rawBlock(5, std::string(60, '\0'))), "fallback");
}

TEST(ProcessArguments, AnEmptyPathIsPassedOver) {
  EXPECT_EQ(argumentsOf(rawBlock(1, bytes("\0\0tool\0", 7))), "tool");
}

TEST(ProcessArguments, EmptyWordsAreNoWordsAndDoNotCount) {
  EXPECT_EQ(argumentsOf(rawBlock(2, bytes("/p\0a\0\0\0b\0c\0", 11))), "a b");
}

TEST(ProcessArguments, WordsThatAreNoUtf8AreSkippedAndDoNotCount) {
  EXPECT_EQ(argumentsOf(argumentBlock(2, "/p", {"a", "\xFF\xFE", "b", "c"})), "a b");
  EXPECT_EQ(argumentsOf(argumentBlock(2, "/p", {"caf\xC3\xA9", "half\xC3"})), "caf\xC3\xA9");
}

TEST(ProcessArguments, OnlyWordsThatAreNoUtf8FallBack) {
  EXPECT_EQ(argumentsOf(argumentBlock(1, "/p", {"\xFF"})), "fallback");
}

TEST(ProcessArguments, APathThatIsNoUtf8DoesNotMatter) {
  EXPECT_EQ(argumentsOf(argumentBlock(1, "/p\xFF", {"tool"})), "tool");
}

TEST(ProcessArguments, ALastWordWithoutItsZeroByteIsDropped) {
  EXPECT_EQ(argumentsOf(rawBlock(3, bytes("/p\0a\0b\0c", 8))), "a b");
  EXPECT_EQ(argumentsOf(rawBlock(1, bytes("/p\0a", 4))), "fallback");
}

TEST(ProcessArguments, BlanksAndControlCharactersInsideWordsStay) {
  EXPECT_EQ(argumentsOf(argumentBlock(2, "/p", {"two words", "a\nb"})), "two words a\nb");
}

TEST(ProcessArguments, ASizeBelowFiveFallsBackAtFiveTheBlockIsRead) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{4}}) {
    ScriptedProcesses processes;
    processes.add(
        {.pid = 7, .argumentBlock = argumentBlock(1, "/p", {"tool"}), .firstArgumentSize = size});
    EXPECT_EQ(readProcessArguments(processes.platform().sysctl, 7, "fallback"), "fallback");
    EXPECT_EQ(processes.count(ProcessOperation::arguments), 1);
  }
  ScriptedProcesses processes;
  processes.add({.pid = 7, .argumentBlock = rawBlock(1, bytes("\0", 1))});
  EXPECT_EQ(readProcessArguments(processes.platform().sysctl, 7, "fallback"), "fallback");
  EXPECT_EQ(processes.count(ProcessOperation::arguments), 2);
}

TEST(ProcessArguments, ABlockOf65536BytesIsReadAndALargerOneFallsBack) {
  std::string block = argumentBlock(2, "/p", {"tool", "x"});
  block.resize(65536, 'e');
  EXPECT_EQ(argumentsOf(block), "tool x");

  block.resize(65537, 'e');
  ScriptedProcesses processes;
  processes.add({.pid = 7, .argumentBlock = block});
  EXPECT_EQ(readProcessArguments(processes.platform().sysctl, 7, "fallback"), "fallback");
  EXPECT_EQ(processes.count(ProcessOperation::arguments), 1);
}

TEST(ProcessArguments, AFailureOfEitherCallFallsBack) {
  EXPECT_EQ(argumentsOf(ScriptedProcess{.pid = 7}), "fallback");
  EXPECT_EQ(argumentsOf(ScriptedProcess{.pid = 7,
                                        .argumentBlock = argumentBlock(1, "/p", {"tool"}),
                                        .secondArgumentCallFails = true}),
            "fallback");
}

TEST(ProcessArguments, ASmallerSecondSizeIsTheLimit) {
  const std::string block = argumentBlock(3, "/p", {"a", "b", "c"});
  ScriptedProcess process{.pid = 7, .argumentBlock = block};
  process.secondArgumentSize = block.size() - 1;
  EXPECT_EQ(argumentsOf(process), "a b");
  process.secondArgumentSize = block.size() - 3;
  EXPECT_EQ(argumentsOf(process), "a");
  for (std::size_t size = 0; size <= 4 + 5; ++size) {
    process.secondArgumentSize = size;
    EXPECT_EQ(argumentsOf(process), "fallback") << size;
  }
}

TEST(ProcessArguments, ALargerSecondSizeIsNeverReadBeyondTheBuffer) {
  const std::string block = argumentBlock(8, "/p", {"a", "b"});
  for (const std::size_t size : {block.size() + 1, std::size_t{65536}, SIZE_MAX}) {
    EXPECT_EQ(
        argumentsOf(ScriptedProcess{.pid = 7, .argumentBlock = block, .secondArgumentSize = size}),
        "a b");
  }
}

TEST(ProcessArguments, ABlockThatGrowsBetweenTheCallsIsReadAsFarAsTheBufferGoes) {
  const std::string block = argumentBlock(3, "/p", {"a", "b", "longer"});
  ScriptedProcess process{.pid = 7, .argumentBlock = block};
  process.firstArgumentSize = block.size() - 2;
  process.secondArgumentSize = block.size();
  EXPECT_EQ(argumentsOf(process), "a b");
}

TEST(ProcessArguments, ABlockThatShrinksBetweenTheCallsEndsInZerosNotInWords) {
  const std::string block = argumentBlock(8, "/p", {"a", "b"});
  ScriptedProcess process{.pid = 7, .argumentBlock = block};
  process.firstArgumentSize = block.size() + 100;
  EXPECT_EQ(argumentsOf(process), "a b");
}

TEST(ProcessArguments, WordsOfAShortBlockAreNone) {
  const std::string block = argumentBlock(1, "/p", {"tool"});
  EXPECT_EQ(processArgumentWords(block), Words{"tool"});
  for (std::size_t size = 0; size < block.size(); ++size) {
    // A copy of exactly this size, so that the address sanitizer sees every byte beyond it.
    const std::vector<char> cut(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(processArgumentWords(cut), Words{}) << size;
  }
}

}  // namespace
}  // namespace korvantis
