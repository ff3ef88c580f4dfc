#include <atomic>
#include <barrier>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <vector>

#include "analysis/ServerWatcher.h"

namespace korvantis {
namespace {

constexpr double now = 1'750'000'000;

std::vector<ProcessSample> servers(double cpuPercent) {
  std::vector<ProcessSample> processes(40);
  for (std::size_t index = 0; index < processes.size(); ++index) {
    processes[index].pid = static_cast<std::int32_t>(index);
    processes[index].projectPath = "/code/shop";
    processes[index].listeningPorts = {static_cast<std::uint16_t>(3000 + index)};
    processes[index].cpuPercent = cpuPercent;
    processes[index].startedAt = Instant{now - 5000};
  }
  return processes;
}

TEST(ServerWatcherConcurrent, OverlappingCallsAreEachComplete) {
  constexpr int callers = 3;
  ServerWatcher watcher(Clock{[] { return now; }});
  const std::vector<ProcessSample> quiet = servers(0);
  std::barrier together(callers);
  std::atomic<int> incomplete = 0;
  {
    std::vector<std::jthread> threads;
    for (int caller = 0; caller < callers; ++caller) {
      threads.emplace_back([&] {
        together.arrive_and_wait();
        for (int round = 0; round < 30; ++round) {
          const auto [idle, rows] = watcher.evaluate(quiet, {});
          if (idle.size() != 40 || rows.size() != 40 || idle[39].idleSeconds != 5000) ++incomplete;
        }
      });
    }
  }
  EXPECT_EQ(incomplete, 0);
}

TEST(ServerWatcherConcurrent, NoLockIsHeldWhileTheClockIsAsked) {
  // The clock runs a whole evaluation of its own, once; a lock held meanwhile would hang.
  std::optional<ServerWatcher> watcher;
  int nested = 0;
  watcher.emplace(Clock{[&] {
    if (nested++ == 0) {
      EXPECT_EQ(watcher->evaluate(servers(0), {}).idleServers.size(), 40U);
    }
    return now;
  }});
  EXPECT_EQ(watcher->evaluate(servers(0), {}).idleServers.size(), 40U);
  EXPECT_EQ(nested, 2);
}

}  // namespace
}  // namespace korvantis
