#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <set>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/linux/NumberedEntries.h"
#include "support/ChildProcess.h"
#include "support/ListeningPort.h"
#include "support/ProcessQuestions.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ListeningPort;
using test::ProcessQuestions;
using testing::Contains;

constexpr int passesPerThread = 8;
constexpr int threadCount = 4;
const std::string sleeper = std::filesystem::canonical("/bin/sleep").string();
const std::vector<std::string> sleeperWords = {"sleeping child", "600"};

/// What a whole pass of the sampler asks about one process; gives what does not fit together.
std::string faultOf(ProcessQuestions& questions, int pid) {
  const auto record = questions.basic(pid);
  if (!record) return {};
  if (record->pbi_pid != static_cast<std::uint32_t>(pid)) return "another pid";
  const auto usage = questions.usage(pid);
  const auto path = questions.path(pid);
  const auto block = questions.block(pid);
  questions.folder(pid);
  questions.ports(pid);
  questions.processes.responsiblePid(pid);
  questions.processes.kill(pid, 0);
  // From its exec on, all that is told of a child must be told of the same program.
  const bool isChild = record->pbi_ppid == static_cast<std::uint32_t>(::getpid());
  if (!isChild || std::string(record->pbi_comm) != "sleep") return {};
  // One that has only just begun may not have been charged for anything yet.
  if (usage && test::cpuTime(*usage) > 1'000'000'000U) return "the time of another";
  if (path && *path != sleeper) return "another path " + *path;
  if (block && test::blockWords(*block) != sleeperWords) return "other words";
  return {};
}

TEST(ConcurrentProcesses, WholePassesAtOnceAgreeWhileProcessesComeAndGo) {
  const ListeningPort port;
  ProcessQuestions questions(systemProcessSources());
  std::atomic<int> finished{0};
  std::vector<std::string> faults(threadCount);
  const auto passes = [&](std::size_t index) {
    for (int pass = 0; pass < passesPerThread; ++pass) {
      const auto pids = questions.pids();
      if (std::set(pids.begin(), pids.end()).size() != pids.size()) faults[index] += "twice ";
      if (!std::count(pids.begin(), pids.end(), ::getpid())) faults[index] += "self missing ";
      for (const int pid : pids) faults[index] += faultOf(questions, pid);
      if (!questions.ports(::getpid()).contains(port.port())) faults[index] += "no port ";
    }
    ++finished;
  };
  std::vector<std::thread> threads;
  for (std::size_t index = 0; index < threadCount; ++index) threads.emplace_back(passes, index);
  while (finished < threadCount) {
    std::vector<ChildProcess> children;
    for (int count = 0; count < 5; ++count) {
      children.push_back(ChildProcess::spawned(sleeper, sleeperWords));
    }
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& fault : faults) EXPECT_EQ(fault, "");
}

TEST(ConcurrentProcesses, WhatIsRememberedIsForgottenAgain) {
  ProcessQuestions questions(systemProcessSources());
  std::vector<std::thread> threads;
  for (int index = 0; index < threadCount; ++index) {
    threads.emplace_back([&] {
      for (int pass = 0; pass < passesPerThread; ++pass) {
        const auto child = ChildProcess::spawned(sleeper, sleeperWords);
        questions.pids();
        questions.basic(child.pid());
        questions.usage(child.pid());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  // What came after the last listing had begun was spared by it; the next one lets it go. The
  // margin is for processes of others that end meanwhile, and smaller than the number of ours.
  questions.pids();
  questions.pids();
  const auto entries = numberedEntries(AT_FDCWD, "/proc");
  ASSERT_TRUE(entries);
  EXPECT_LE(questions.processes.rememberedCount(), entries->size() + 20);
}

}  // namespace
}  // namespace korvantis
