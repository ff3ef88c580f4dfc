#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "support/ProcessQuestions.h"
#include "support/RecordedProcesses.h"

namespace korvantis {
namespace {

using test::ProcessQuestions;
using test::RecordedProcess;
using test::RecordedProcesses;
using testing::ElementsAre;
using testing::IsEmpty;

/// A machine whose system calls only write down what they were asked.
class RecordedSignals : public testing::Test {
 protected:
  ProcessSources sources() {
    ProcessSources made = machine.sources();
    made.pidfdOpen = [this](std::int32_t) {
      if (openError != 0) {
        errno = openError;
        return -1;
      }
      return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    };
    made.pidfdSendSignal = [this](int, int signal) {
      calls.push_back("pidfd " + std::to_string(signal));
      return 0;
    };
    made.kill = [this](std::int32_t pid, int signal) {
      calls.push_back("kill " + std::to_string(pid) + " " + std::to_string(signal));
      return 0;
    };
    return made;
  }

  void put(std::int32_t pid, std::uint64_t startTicks) {
    RecordedProcess process;
    process.pid = pid;
    process.startTicks = startTicks;
    machine.put(process);
  }

  RecordedProcesses machine;
  int openError = 0;
  std::vector<std::string> calls;
};

TEST_F(RecordedSignals, ReachAProcessThatWasListedOrRead) {
  put(10, 100);
  ProcessQuestions questions(sources());
  questions.pids();
  EXPECT_EQ(questions.processes.kill(10, 15), 0);
  put(11, 100);
  ASSERT_TRUE(questions.basic(11));
  EXPECT_EQ(questions.processes.kill(11, 9), 0);
  EXPECT_THAT(calls, ElementsAre("pidfd 15", "pidfd 9"));
}

TEST_F(RecordedSignals, NeverReachAProcessThatInheritedTheNumber) {
  put(10, 100);
  ProcessQuestions questions(sources());
  questions.pids();
  put(10, 101);
  EXPECT_EQ(questions.processes.kill(10, 9), -1);
  EXPECT_EQ(errno, ESRCH);
  openError = ENOSYS;
  EXPECT_EQ(questions.processes.kill(10, 9), -1);
  machine.remove(10);
  EXPECT_EQ(questions.processes.kill(10, 9), -1);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RecordedSignals, NeverReachAProcessThatWasNotShown) {
  put(10, 100);
  RecordedProcess kernel;
  kernel.pid = 2;
  kernel.isKernelThread = true;
  machine.put(kernel);
  ProcessQuestions questions(sources());
  EXPECT_EQ(questions.processes.kill(10, 9), -1);
  questions.pids();
  EXPECT_EQ(questions.processes.kill(2, 9), -1);
  EXPECT_EQ(questions.processes.kill(11, 9), -1);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RecordedSignals, NeverReachAProcessThatTheCapCutOff) {
  put(10, 100);
  put(11, 200);
  ProcessQuestions questions(sources());
  ASSERT_THAT(questions.pids(4), ElementsAre(11));
  EXPECT_EQ(questions.processes.kill(10, 9), -1);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RecordedSignals, NeverGoToGroupsOfProcesses) {
  put(10, 100);
  ProcessQuestions questions(sources());
  questions.pids();
  for (const int pid : {0, -1, -10}) {
    EXPECT_EQ(questions.processes.kill(pid, 9), -1) << pid;
    EXPECT_EQ(errno, ESRCH);
  }
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RecordedSignals, GoByNumberWhereProcessDescriptorsAreMissing) {
  put(10, 100);
  ProcessQuestions questions(sources());
  questions.pids();
  for (const int error : {ENOSYS, EPERM}) {
    openError = error;
    EXPECT_EQ(questions.processes.kill(10, 15), 0);
  }
  EXPECT_THAT(calls, ElementsAre("kill 10 15", "kill 10 15"));
}

TEST_F(RecordedSignals, AreNotSentWhenTheProcessCannotBeOpenedForAnotherReason) {
  put(10, 100);
  ProcessQuestions questions(sources());
  questions.pids();
  openError = EMFILE;
  EXPECT_EQ(questions.processes.kill(10, 15), -1);
  EXPECT_EQ(errno, EMFILE);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RecordedSignals, AreNotSentWhereNumbersMeanOtherProcesses) {
  put(10, 100);
  ProcessQuestions questions(machine.sources());
  questions.pids();
  EXPECT_EQ(questions.processes.kill(10, 15), -1);
  EXPECT_EQ(errno, ESRCH);
}

}  // namespace
}  // namespace korvantis
