#include <atomic>
#include <barrier>
#include <future>
#include <gtest/gtest.h>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "analysis/ProjectLocator.h"

namespace korvantis {
namespace {

/// Files of which only the existence is asked, answered by `exists`.
FileManagerCalls filesThat(std::function<bool(const std::string&)> exists) {
  FileManagerCalls calls;
  calls.homeDirectoryForCurrentUser = [] { return "/home/ada"; };
  calls.fileExistsAtPath = std::move(exists);
  return calls;
}

TEST(ProjectLocatorConcurrent, TwoCallersWalkOneFolderAtOnceAndAgree) {
  // Each walk waits for the other one to begin: were the lock held meanwhile, the second could
  // never begin and this test would hang.
  std::latch bothWalking(2);
  std::atomic<int> questions = 0;
  ProjectLocator locator(filesThat([&](const std::string& path) {
    if (++questions <= 2) bothWalking.arrive_and_wait();
    return path == "/code/shop/.git";
  }));
  auto other =
      std::async(std::launch::async, [&] { return locator.locateProjectRoot("/code/shop/src"); });
  EXPECT_EQ(locator.locateProjectRoot("/code/shop/src"), "/code/shop");
  EXPECT_EQ(other.get(), "/code/shop");
  const int asked = questions;
  EXPECT_EQ(locator.locateProjectRoot("/code/shop/src"), "/code/shop");
  EXPECT_EQ(questions, asked);
}

TEST(ProjectLocatorConcurrent, SlowWalkOfOneFolderDoesNotHoldUpAnother) {
  std::latch slowBegan(1);
  std::latch mayEnd(1);
  ProjectLocator locator(filesThat([&](const std::string& path) {
    if (path == "/slow/.git") {
      slowBegan.count_down();
      mayEnd.wait();
    }
    return path == "/slow/.git" || path == "/quick/go.mod";
  }));
  auto slow = std::async(std::launch::async, [&] { return locator.locateProjectRoot("/slow"); });
  slowBegan.wait();
  EXPECT_EQ(locator.locateProjectRoot("/quick/src"), "/quick");
  mayEnd.count_down();
  EXPECT_EQ(slow.get(), "/slow");
}

TEST(ProjectLocatorConcurrent, WalkThatEndsLaterWins) {
  // The marker appears between the two walks; the one that saw none ends last.
  std::latch blindBegan(1);
  std::latch mayEnd(1);
  std::atomic<int> questions = 0;
  std::atomic<bool> isMarked = false;
  ProjectLocator locator(filesThat([&](const std::string& path) {
    const bool exists = isMarked && path == "/code/.git";
    if (++questions == 18) {
      blindBegan.count_down();
      mayEnd.wait();
    }
    return exists;
  }));
  auto blind = std::async(std::launch::async, [&] { return locator.locateProjectRoot("/code"); });
  blindBegan.wait();
  isMarked = true;
  EXPECT_EQ(locator.locateProjectRoot("/code"), "/code");
  EXPECT_EQ(locator.locateProjectRoot("/code"), "/code");
  mayEnd.count_down();
  EXPECT_EQ(blind.get(), std::nullopt);
  EXPECT_EQ(locator.locateProjectRoot("/code"), std::nullopt);
}

TEST(ProjectLocatorConcurrent, ManyCallersGiveTheSameProjects) {
  constexpr int callers = 4;
  ProjectLocator locator(filesThat([](const std::string& path) { return path.ends_with(".git"); }));
  std::vector<ProcessSample> processes(60);
  for (std::size_t index = 0; index < processes.size(); ++index) {
    processes[index].workingDirectory = "/code/p" + std::to_string(index % 20);
  }
  std::barrier start(callers);
  std::vector<std::vector<DevProject>> results(callers);
  {
    std::vector<std::jthread> threads;
    for (auto& result : results) {
      threads.emplace_back([&] {
        std::vector<ProcessSample> own = processes;
        start.arrive_and_wait();
        for (int round = 0; round < 5; ++round) result = locator.groupProjects(own, {}, 1000);
      });
    }
  }
  EXPECT_EQ(results[0].size(), 20U);
  for (const auto& result : results) EXPECT_EQ(result, results[0]);
}

}  // namespace
}  // namespace korvantis
