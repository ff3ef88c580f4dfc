// Whether one process may be stopped: by other rules than an application.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/QuitCheck.h"
#include "analysis/QuitFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Verdict = QuitSafetyVerdictKind;

constexpr std::int32_t pid = 700;

QuitSafetyResult judged(const ProcessSample& process,
                        const std::vector<SleepBlocker>& blockers = {}) {
  return QuitCheck::evaluate(process.pid, {process}, blockers);
}

void expectDoNot(const ProcessSample& process) {
  const auto result = judged(process);
  EXPECT_EQ(result.verdict, Verdict::doNot);
  EXPECT_EQ(result.reason, "System process owned by macOS (" + process.name +
                               "). Stopping it may destabilize your session.");
}

TEST(QuitCheckProcess, AnIdleProcessOfTheUserIsSafe) {
  const auto result = judged(idleProcess(pid));
  EXPECT_EQ(result.verdict, Verdict::safe);
  EXPECT_EQ(result.reason, "User process (worker) is safe to stop. Frees 64 MB.");
  EXPECT_EQ(result.freedMemoryBytes, std::uint64_t{64} << 20);
  EXPECT_THAT(result.freedPorts, IsEmpty());
}

TEST(QuitCheckProcess, OneThatHasGoneIsAskFirstAndFreesNothing) {
  const auto result = QuitCheck::evaluate(701, {idleProcess(pid, {3000})}, {blockerOf(701)});
  EXPECT_EQ(result, (QuitSafetyResult{.verdict = Verdict::askFirst,
                                      .reason = "Process 701 is no longer running.",
                                      .freedMemoryBytes = 0,
                                      .freedPorts = {}}));
}

TEST(QuitCheckProcess, EvenPID1IsNoDoNotIfItIsMissingFromTheList) {
  const auto result = QuitCheck::evaluate(1, {}, {});
  EXPECT_EQ(result.verdict, Verdict::askFirst);
  EXPECT_EQ(result.reason, "Process 1 is no longer running.");
  EXPECT_EQ(QuitCheck::evaluate(-5, {}, {}).reason, "Process -5 is no longer running.");
}

TEST(QuitCheckProcess, PID1IsDoNotWhateverItsOtherFigures) {
  for (const std::int32_t number : {1, 0, -1}) {
    ProcessSample process = idleProcess(number);
    expectDoNot(process);
    process.diskWriteBytesPerSec = 1e9;
    process.listeningPorts = {80};
    expectDoNot(process);
  }
  EXPECT_EQ(judged(idleProcess(2)).verdict, Verdict::safe);
}

TEST(QuitCheckProcess, AnyProcessOfUser0IsDoNotAlsoOutsideSystem) {
  ProcessSample process = idleProcess(pid);
  process.uid = 0;
  expectDoNot(process);
  process.executablePath.clear();
  expectDoNot(process);
}

TEST(QuitCheckProcess, EveryCriticalNameIsDoNotAlsoOfAnotherUser) {
  for (const std::string_view name : QuitCheck::criticalSystemNames) {
    ProcessSample process = idleProcess(pid);
    process.name = name;
    expectDoNot(process);
  }
}

TEST(QuitCheckProcess, OneNamedDockWithANonZeroUIDIsDoNotAndDockInLowerCaseIsSafe) {
  ProcessSample process = idleProcess(pid);
  process.uid = 501;
  process.name = "Dock";
  expectDoNot(process);
  process.name = "dock";
  EXPECT_EQ(judged(process).verdict, Verdict::safe);
}

TEST(QuitCheckProcess, AnyPathUnderSystemIsDoNot) {
  ProcessSample process = idleProcess(pid);
  for (const char* path : {"/System/Applications/Mail.app/Contents/MacOS/Mail", "/System/"}) {
    process.executablePath = path;
    expectDoNot(process);
  }
  for (const char* path : {"/System", "/Systems/x", "/usr/System/x", "System/x"}) {
    process.executablePath = path;
    EXPECT_EQ(judged(process).verdict, Verdict::safe) << path;
  }
}

TEST(QuitCheckProcess, WritingAbove50000BytesASecondAsksFirstAndExactlyThatIsSafe) {
  ProcessSample process = idleProcess(pid);
  process.diskWriteBytesPerSec = 50000.0;
  EXPECT_EQ(judged(process).verdict, Verdict::safe);
  process.diskWriteBytesPerSec = 50000.1;
  const auto result = judged(process);
  EXPECT_EQ(result.verdict, Verdict::askFirst);
  EXPECT_EQ(result.reason, "Writing 49 KB/s to disk right now.");
}

TEST(QuitCheckProcess, ASleepBlockerOfThisPIDAsksFirst) {
  const auto result = judged(idleProcess(pid), {blockerOf(12), blockerOf(pid)});
  EXPECT_EQ(result.verdict, Verdict::askFirst);
  EXPECT_EQ(result.reason, "Holding an active power assertion.");
  EXPECT_EQ(judged(idleProcess(pid), {blockerOf(12)}).verdict, Verdict::safe);
}

TEST(QuitCheckProcess, TheFirstRuleThatHoldsGivesTheReason) {
  ProcessSample process = idleProcess(pid);
  process.diskWriteBytesPerSec = 60000;
  EXPECT_EQ(judged(process, {blockerOf(pid)}).reason, "Writing 59 KB/s to disk right now.");
  process.name = "mds";
  EXPECT_EQ(judged(process, {blockerOf(pid)}).verdict, Verdict::doNot);
}

TEST(QuitCheckProcess, OpenPortsAndFullCPUAreSafeUnlikeInAnApplication) {
  ProcessSample process = idleProcess(pid, {3000, 8080});
  process.cpuPercent = 100;
  const auto result = judged(process);
  EXPECT_EQ(result.verdict, Verdict::safe);
  EXPECT_THAT(result.freedPorts, ElementsAre(3000, 8080));
  AppGroup group = idleApp();
  group.processes = {process};
  EXPECT_EQ(QuitCheck::evaluate(group, {}).verdict, Verdict::askFirst);
}

TEST(QuitCheckProcess, OneIsJudgedStricterOnDiskWritesThanAnApplication) {
  ProcessSample process = idleProcess(pid);
  process.diskWriteBytesPerSec = 75000;
  EXPECT_EQ(judged(process).verdict, Verdict::askFirst);
  AppGroup group = idleApp();
  group.processes = {process};
  group.diskWriteBytesPerSec = 75000;
  EXPECT_EQ(QuitCheck::evaluate(group, {}).verdict, Verdict::safe);
}

TEST(QuitCheckProcess, FreedPortsAreItsServicePortsInTheirOrder) {
  EXPECT_THAT(judged(idleProcess(pid, {9000, 80, 49152, 49151, 80})).freedPorts,
              ElementsAre(9000, 80, 49151, 80));
}

TEST(QuitCheckProcess, TheFirstOfTwoWithThePIDIsJudged) {
  ProcessSample second = idleProcess(pid);
  second.uid = 0;
  EXPECT_EQ(QuitCheck::evaluate(pid, {idleProcess(12), idleProcess(pid), second}, {}).verdict,
            Verdict::safe);
}

}  // namespace
}  // namespace korvantis
