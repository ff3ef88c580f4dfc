#include <atomic>
#include <barrier>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "engine/OstrelEngine.h"
#include "engine/ScriptedEngine.h"
#include "support/ChildProcess.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ScriptedProcess;
using test::ScriptedProcesses;

/// Ticks as the main thread and the bridge do, `count` times each and at the same time, while a
/// third thread asks what may be stopped.
void tickOnTwoThreads(OstrelEngine& engine, int count) {
  std::barrier together(3);
  const auto tick = [&](double hotCelsius) {
    together.arrive_and_wait();
    for (int i = 0; i < count; ++i) {
      engine.sampleTick({}, {}, hotCelsius);
    }
  };
  std::thread timer(tick, 85.0);
  std::thread bridge(tick, 82.0);
  together.arrive_and_wait();
  for (int i = 0; i < count; ++i) {
    engine.checkQuitSafety(1);
    engine.checkQuitSafety(AppGroup{});
    engine.readHardwareInfo();
  }
  timer.join();
  bridge.join();
}

PlatformCalls scriptedPlatform(ScriptedProcesses& table) {
  PlatformCalls platform = test::platformWithoutProcesses();
  table.install(platform);
  return platform;
}

TEST(OstrelEngineConcurrent, TwoTicksAtOnceOverScriptedProcesses) {
  ScriptedProcesses table;
  for (std::int32_t pid = 2; pid < 60; ++pid) {
    ScriptedProcess process;
    process.pid = pid;
    process.name = "worker" + std::to_string(pid % 7);
    process.footprint = 1024;
    process.path = pid % 2 == 0 ? "/Applications/Editor.app/Contents/MacOS/Editor" : "/usr/bin/w";
    process.descriptors.push_back({.port = static_cast<std::uint16_t>(3000 + pid)});
    table.add(process);
  }
  OstrelEngine engine(scriptedPlatform(table));

  tickOnTwoThreads(engine, 20);

  std::size_t grouped = 0;
  for (const AppGroup& group : engine.sampleTick({}, {}).appGroups) {
    grouped += group.processes.size();
  }
  EXPECT_EQ(grouped, 58U);
}

TEST(OstrelEngineConcurrent, TwoTicksAtOnceWithNoProcessesAtAll) {
  ScriptedProcesses table;
  OstrelEngine engine(scriptedPlatform(table));

  tickOnTwoThreads(engine, 50);

  EXPECT_THAT(engine.sampleTick({}, {}).appGroups, ::testing::IsEmpty());
}

TEST(OstrelEngineConcurrent, TwoTicksAtOnceOverTheRealSystemWhileProcessesComeAndGo) {
  OstrelEngine engine(systemPlatformCalls());
  std::atomic<bool> ticking = true;
  std::thread churn([&] {
    while (ticking) {
      ChildProcess::program("/bin/true", {"true"}).waitForSignal();
    }
  });

  tickOnTwoThreads(engine, 8);
  ticking = false;
  churn.join();

  EXPECT_THAT(engine.sampleTick({}, {}).appGroups, ::testing::Not(::testing::IsEmpty()));
}

TEST(OstrelEngineConcurrent, StopsWhileTicksRunReachOnlyTheProcessMeant) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess meant = ChildProcess::prepared();
  const ChildProcess spared = ChildProcess::prepared();
  engine.sampleTick({}, {});
  std::thread bridge([&] {
    for (int i = 0; i < 5; ++i) {
      engine.sampleTick({}, {}, 82.0);
    }
  });

  EXPECT_TRUE(engine.stopProcess(meant.pid(), false));
  bridge.join();

  EXPECT_EQ(meant.waitForSignal(), SIGTERM);
  EXPECT_FALSE(spared.hasEnded());
}

TEST(OstrelEngineConcurrent, TheSharedEngineIsMadeOnceByThreadsThatAskAtOnce) {
  constexpr int threadCount = 4;
  std::barrier together(threadCount);
  std::vector<OstrelEngine*> engines(threadCount, nullptr);
  std::vector<std::thread> threads;
  for (OstrelEngine*& engine : engines) {
    threads.emplace_back([&engine, &together] {
      together.arrive_and_wait();
      engine = &OstrelEngine::shared();
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }

  EXPECT_THAT(engines, ::testing::Each(&OstrelEngine::shared()));
}

TEST(OstrelEngineConcurrent, BridgeStartsAtOnceKeepOneProvider) {
  ScriptedProcesses table;
  OstrelEngine engine(scriptedPlatform(table));
  const auto token = std::make_shared<int>(0);
  std::barrier together(2);
  const auto start = [&] {
    BridgeProvider provider = [token](const std::string&, const nlohmann::json&) {
      return nlohmann::ordered_json{{"token", *token}};
    };
    together.arrive_and_wait();
    engine.startBridgeListener(std::move(provider));
  };
  std::thread first(start);
  std::thread second(start);
  first.join();
  second.join();

  // Ours, the one inside `start`, and that of the one provider kept.
  EXPECT_EQ(token.use_count(), 2);
}

}  // namespace
}  // namespace korvantis
