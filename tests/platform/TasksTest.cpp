#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/close_range.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/BackgroundCalls.h"
#include "platform/TaskCalls.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::TemporaryFolder;

TaskLaunch shell(const std::string& script) {
  return systemTaskCalls().launch("/bin/sh", {"-c", script});
}

RunningTask ended(const std::string& script) {
  TaskLaunch launch = shell(script);
  EXPECT_EQ(launch.error, "");
  while (launch.task->isRunning()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  return *launch.task;
}

TEST(Tasks, AProgramGetsItsArgumentsAsTheyAre) {
  const TaskLaunch launch = systemTaskCalls().launch(
      "/bin/sh", {"-c", "printf '%s|' \"$0\" \"$@\" >&2", "a b", "$HOME", "\"q\"\n", ""});
  ASSERT_TRUE(launch.task);
  EXPECT_EQ(launch.task->readStandardErrorToEndOfFile(), "a b|$HOME|\"q\"\n||");
}

TEST(Tasks, TheExitStatusAndTheSignalAreTold) {
  EXPECT_EQ(ended("exit 0").terminationStatus(), 0);
  EXPECT_EQ(ended("exit 3").terminationStatus(), 3);
  EXPECT_EQ(ended("kill -9 $$").terminationStatus(), 9);
}

TEST(Tasks, StandardErrorIsReadToItsEndAndStandardOutputIsNot) {
  const RunningTask task = ended("echo out; echo one >&2; printf 'two\\377' >&2");
  EXPECT_EQ(task.readStandardErrorToEndOfFile(), "one\ntwo\xFF");
  EXPECT_EQ(task.readStandardErrorToEndOfFile(), "");
}

TEST(Tasks, WhoWritesTooMuchThatNobodyReadsWaits) {
  const TaskLaunch launch = shell("head -c 1000000 /dev/zero; exit 0");
  ASSERT_TRUE(launch.task);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_TRUE(launch.task->isRunning());
  launch.task->terminate();
}

TEST(Tasks, AProgramThatIsNotThereOrMayNotBeRunGivesTheSystemsWords) {
  const TemporaryFolder folder;
  const TaskLaunch missing = systemTaskCalls().launch(folder.path("none"), {});
  EXPECT_FALSE(missing.task);
  EXPECT_EQ(missing.error, "No such file or directory");

  const TaskLaunch noProgram = systemTaskCalls().launch(folder.write("text", "hello"), {});
  EXPECT_FALSE(noProgram.task);
  EXPECT_EQ(noProgram.error, "Permission denied");
}

TEST(Tasks, TerminateAsksItToEnd) {
  const TaskLaunch launch =
      shell("trap 'kill $!; exit 7' TERM; echo ready >&2; exec 2>&-; sleep 60 & wait");
  ASSERT_TRUE(launch.task);
  EXPECT_EQ(launch.task->readStandardErrorToEndOfFile().substr(0, 5), "ready");
  EXPECT_TRUE(launch.task->isRunning());
  launch.task->terminate();
  while (launch.task->isRunning()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_EQ(launch.task->terminationStatus(), 7);
  launch.task->terminate();
}

TEST(Tasks, NoDescriptorOfOursIsInheritedAndStandardInputIsEmpty) {
  // What this program has itself inherited from whoever runs the tests is not ours.
  ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  const TaskLaunch other = shell("sleep 60");
  const RunningTask task = ended("cat; ls /proc/self/fd | tr '\\n' ' ' >&2");
  EXPECT_EQ(task.readStandardErrorToEndOfFile(), "0 1 2 3 ") << "3 is the folder that ls reads";
  other.task->terminate();
}

TEST(Tasks, APipeThatBreaksKillsProgramsAgainAlthoughWeIgnoreIt) {
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  const RunningTask task = ended("kill -PIPE $$; exit 0");
  std::signal(SIGPIPE, before);
  EXPECT_EQ(task.terminationStatus(), SIGPIPE);
}

TEST(Tasks, WhatIsLetGoWhileItRunsLeavesNoZombie) {
  pid_t pid = 0;
  {
    const TaskLaunch launch = shell("echo $$ >&2; exec 2>&-; sleep 0.05");
    ASSERT_TRUE(launch.task);
    pid = std::stoi(launch.task->readStandardErrorToEndOfFile());
    ASSERT_TRUE(launch.task->isRunning());
  }
  // A zombie would answer for ever.
  while (::kill(pid, 0) == 0) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_EQ(errno, ESRCH);
}

TEST(BackgroundThreads, ConcurrentWorkRunsElsewhereAndNicely) {
  std::atomic<int> niceness = -100;
  std::atomic<bool> isElsewhere = false;
  std::atomic<bool> isDone = false;
  const auto here = std::this_thread::get_id();
  const int ownNiceness = ::getpriority(PRIO_PROCESS, 0);
  systemBackgroundCalls().detached([&] {
    niceness = ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
    isElsewhere = std::this_thread::get_id() != here;
    isDone = true;
  });
  while (!isDone) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(niceness, std::max(10, ownNiceness));
  EXPECT_TRUE(isElsewhere);
  EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), ownNiceness) << "this thread keeps its own";
}

TEST(BackgroundThreads, SleepHoldsTheThread) {
  const auto start = std::chrono::steady_clock::now();
  systemBackgroundCalls().sleep(0.05);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

}  // namespace
}  // namespace korvantis
