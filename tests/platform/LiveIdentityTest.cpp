#include <ctime>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

#include "support/ChildProcess.h"
#include "support/ProcessQuestions.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ProcessQuestions;
using testing::Contains;

/// Waits for the next clock tick: only from then on does a new process differ in its start.
void awaitNextTick() {
  const auto ticks = [] {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return time.tv_sec * 100 + time.tv_nsec / 10'000'000;
  };
  const auto first = ticks();
  while (ticks() < first + 2) {
  }
}

/// A process that has ended, and the one that got its number.
class LiveIdentity : public testing::Test {
 protected:
  void SetUp() override {
    probe();
    if (!heir) GTEST_SKIP() << "numbers of processes can't be chosen here";
    heir.reset();
  }

  /// Ends the first process and starts another one under its number, on a busy machine perhaps
  /// after others have had it for a moment.
  void replace() {
    number = first.pid();
    awaitNextTick();
    first.end();
    for (int attempt = 0; attempt < 1000 && !heir; ++attempt) {
      heir = ChildProcess::withNumber(number, [] { ::prctl(PR_SET_NAME, "heir"); });
    }
  }

  ChildProcess first = ChildProcess::prepared();
  std::optional<ChildProcess> heir;
  pid_t number = 0;

 private:
  void probe() {
    ChildProcess kept = ChildProcess::prepared();
    std::swap(kept, first);
    replace();
    std::swap(kept, first);
  }
};

TEST_F(LiveIdentity, TheHeirOfANumberIsNotAnsweredForItsForerunner) {
  ProcessQuestions questions(systemProcessSources());
  ASSERT_TRUE(questions.basic(first.pid()));
  replace();
  ASSERT_TRUE(heir);
  EXPECT_FALSE(questions.usage(number));
  EXPECT_FALSE(questions.path(number));
  EXPECT_FALSE(questions.folder(number));
  EXPECT_FALSE(questions.block(number));
  EXPECT_TRUE(questions.descriptors(number).empty());
  EXPECT_FALSE(questions.basic(number)) << "missing once, so that nobody mixes the two";
  ASSERT_TRUE(questions.basic(number));
  EXPECT_STREQ(questions.basic(number)->pbi_comm, "heir");
  EXPECT_TRUE(questions.usage(number));
}

TEST_F(LiveIdentity, TheCpuClockOfAnHeirIsNotTakenForThatOfItsForerunner) {
  ProcessSources sources = systemProcessSources();
  const auto clock = sources.cpuNanoseconds;
  sources.cpuNanoseconds = [&](std::int32_t pid) {
    // The number changes hands in the middle of the question.
    replace();
    return clock(pid);
  };
  ProcessQuestions questions(sources);
  ASSERT_TRUE(questions.basic(first.pid()));
  EXPECT_FALSE(questions.usage(first.pid()));
  EXPECT_TRUE(clock(number)) << "the clock alone would have answered";
}

TEST_F(LiveIdentity, ASignalReachesTheProcessThatWasShown) {
  ProcessQuestions questions(systemProcessSources());
  questions.pids();
  EXPECT_EQ(questions.processes.kill(first.pid(), SIGTERM), 0);
  EXPECT_EQ(first.waitForSignal(), SIGTERM);
}

TEST_F(LiveIdentity, ASignalNeverReachesTheHeirOfANumber) {
  for (const bool isMissing : {false, true}) {
    ProcessSources sources = systemProcessSources();
    if (isMissing) {
      sources.pidfdOpen = [](std::int32_t) {
        errno = ENOSYS;
        return -1;
      };
    }
    ProcessQuestions questions(sources);
    first = ChildProcess::prepared();
    heir.reset();
    questions.pids();
    replace();
    ASSERT_TRUE(heir);
    EXPECT_EQ(questions.processes.kill(number, SIGKILL), -1);
    EXPECT_EQ(errno, ESRCH);
    EXPECT_FALSE(questions.basic(number));
    EXPECT_EQ(questions.processes.kill(number, SIGKILL), -1) << "still not shown";
    EXPECT_FALSE(heir->hasEnded());
    ASSERT_TRUE(questions.basic(number));
    EXPECT_EQ(questions.processes.kill(number, SIGKILL), 0) << "shown by now";
    EXPECT_EQ(heir->waitForSignal(), SIGKILL);
  }
}

TEST(LiveSignals, AProcessThatHasEndedGetsNone) {
  ProcessQuestions questions(systemProcessSources());
  auto child = ChildProcess::prepared();
  const pid_t pid = child.pid();
  questions.pids();
  child.end();
  EXPECT_EQ(questions.processes.kill(pid, SIGTERM), -1);
}

TEST(LiveSignals, AProcessThatWasNeverShownGetsNone) {
  ProcessQuestions questions(systemProcessSources());
  const auto child = ChildProcess::prepared();
  EXPECT_EQ(questions.processes.kill(child.pid(), SIGKILL), -1);
  EXPECT_EQ(questions.processes.kill(0, 0), -1);
  EXPECT_EQ(questions.processes.kill(-1, 0), -1);
  EXPECT_EQ(questions.processes.kill(-child.pid(), 0), -1);
  EXPECT_FALSE(child.hasEnded());
}

TEST(LiveSignals, ThisProcessCanBeReachedLikeAnyOther) {
  ProcessQuestions questions(systemProcessSources());
  questions.pids();
  EXPECT_EQ(questions.processes.kill(::getpid(), 0), 0);
}

}  // namespace
}  // namespace korvantis
