#include <atomic>
#include <barrier>
#include <cstdint>
#include <future>
#include <gtest/gtest.h>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"

namespace korvantis {
namespace {

std::string bundleNumber(int number) {
  return "/Applications/App" + std::to_string(number) + ".app";
}

TEST(AppGrouperConcurrent, TwoCallersReadOneBundleAtOnceAndAgree) {
  // Each read waits for the other one to begin: were the lock held during a read, the second
  // could never begin and this test would hang.
  std::latch bothReading(2);
  std::atomic<int> reads = 0;
  PropertyListCalls calls;
  calls.dictionaryWithContentsOfFile = [&](const std::string&) -> std::optional<PropertyMap> {
    if (++reads <= 2) bothReading.arrive_and_wait();
    return PropertyMap{{"CFBundleName", textValue("Shared")}};
  };
  AppGrouper grouper(calls);
  const std::vector<ProcessSample> processes{processAt(7, bundleNumber(1) + "/Contents/MacOS/x")};
  auto other = std::async(std::launch::async, [&] { return grouper.group(processes, 1000); });
  const auto groups = grouper.group(processes, 1000);
  EXPECT_EQ(other.get(), groups);
  EXPECT_EQ(groups[0].name, "Shared");
  EXPECT_EQ(grouper.group(processes, 1000), groups);
  EXPECT_EQ(reads, 2);
}

TEST(AppGrouperConcurrent, SlowReadOfOneBundleDoesNotHoldUpAnother) {
  std::latch slowBegan(1);
  std::latch mayEnd(1);
  PropertyListCalls calls;
  calls.dictionaryWithContentsOfFile = [&](const std::string& path) -> std::optional<PropertyMap> {
    if (path.starts_with(bundleNumber(1))) {
      slowBegan.count_down();
      mayEnd.wait();
    }
    return std::nullopt;
  };
  AppGrouper grouper(calls);
  auto slow = std::async(std::launch::async, [&] {
    return grouper.group({processAt(7, bundleNumber(1) + "/x")}, 1000);
  });
  slowBegan.wait();
  EXPECT_EQ(grouper.group({processAt(8, bundleNumber(2) + "/x")}, 1000)[0].name, "App2");
  mayEnd.count_down();
  EXPECT_EQ(slow.get()[0].name, "App1");
}

TEST(AppGrouperConcurrent, ManyCallersGiveTheSameGroups) {
  constexpr int callers = 4;
  ScriptedPropertyLists lists;
  std::vector<ProcessSample> processes;
  for (int number = 0; number < 60; ++number) {
    lists.set(bundleNumber(number), {{"CFBundleIdentifier", textValue("org.app")}});
    processes.push_back(processAt(100 + number, bundleNumber(number) + "/Contents/MacOS/x"));
  }
  AppGrouper grouper(lists.calls());
  std::barrier start(callers);
  std::vector<std::vector<AppGroup>> results(callers);
  {
    std::vector<std::jthread> threads;
    for (auto& result : results) {
      threads.emplace_back([&] {
        start.arrive_and_wait();
        for (int round = 0; round < 5; ++round) result = grouper.group(processes, 1000);
      });
    }
  }
  for (const auto& result : results) EXPECT_EQ(result, results[0]);
  EXPECT_EQ(results[0].size(), 60U);
  EXPECT_LE(lists.reads().size(), 60U * callers);
}

}  // namespace
}  // namespace korvantis
