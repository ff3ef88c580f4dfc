#include <atomic>
#include <barrier>
#include <future>
#include <gtest/gtest.h>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "analysis/AgentScanner.h"
#include "support/ScriptedFiles.h"

namespace korvantis {
namespace {

constexpr std::int64_t sampleTokens = 184200;
constexpr std::int64_t logTokens = 50000;

ProcessSample claude() {
  ProcessSample process;
  process.pid = 10;
  process.name = "claude";
  return process;
}

TEST(AgentScannerConcurrent, SecondCallerDuringAWalkKeepsTheOldTokensAndReturnsAtOnce) {
  test::ScriptedFiles files;
  files.walks["/home/ada/.claude/projects"] = {{"a.jsonl", 5'400'000}};
  std::latch walking(1);
  std::latch mayEnd(1);
  files.hook = [&](const std::string& question) {
    if (question != "next") return;
    if (!walking.try_wait()) {
      walking.count_down();
      mayEnd.wait();
    }
  };
  AgentScanner scanner(Clock{[] { return 1'750'000'000.0; }}, files.calls());
  auto walk = std::async(std::launch::async, [&] { return scanner.scanAgentsAndLimits({}); });
  walking.wait();
  const AgentScanner::Scan meanwhile = scanner.scanAgentsAndLimits({claude()});
  EXPECT_EQ(meanwhile.planLimits[0].tokensToday, sampleTokens);
  EXPECT_EQ(meanwhile.sessions.at(0).tokensToday, sampleTokens);
  mayEnd.count_down();
  EXPECT_EQ(walk.get().planLimits[0].tokensToday, logTokens);
  EXPECT_EQ(scanner.scanAgentsAndLimits({}).planLimits[0].tokensToday, logTokens);
}

TEST(AgentScannerConcurrent, CallersAtOnceWalkOnceAndEachScanIsWhole) {
  constexpr int callers = 3;
  test::ScriptedFiles files;
  files.walks["/home/ada/.claude/projects"] = {{"a.jsonl", 5'400'000}};
  AgentScanner scanner(Clock{[] { return 1'750'000'000.0; }}, files.calls());
  std::barrier together(callers);
  std::atomic<int> torn = 0;
  {
    std::vector<std::jthread> threads;
    for (int caller = 0; caller < callers; ++caller) {
      threads.emplace_back([&] {
        together.arrive_and_wait();
        for (int round = 0; round < 30; ++round) {
          const auto [sessions, limits] = scanner.scanAgentsAndLimits({claude()});
          const bool isOld = limits[0].tokensToday == sampleTokens;
          const bool isWhole = limits[0].tokensWeek == (isOld ? 1420500 : 300000) &&
                               sessions.at(0).tokensToday == limits[0].tokensToday;
          if (!isWhole) ++torn;
        }
      });
    }
  }
  EXPECT_EQ(torn, 0);
  int walks = 0;
  for (const std::string& question : files.questions()) {
    walks += question.starts_with("walk") ? 1 : 0;
  }
  EXPECT_EQ(walks, 1);
}

}  // namespace
}  // namespace korvantis
