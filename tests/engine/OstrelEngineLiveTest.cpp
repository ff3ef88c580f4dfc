#include <csignal>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "engine/OstrelEngine.h"
#include "support/ChildProcess.h"

namespace korvantis {
namespace {

using test::ChildProcess;

/// How many groups of the snapshot hold the process.
int groupsHolding(const EngineSnapshot& snapshot, std::int32_t pid) {
  int holding = 0;
  for (const AppGroup& group : snapshot.appGroups) {
    for (const ProcessSample& process : group.processes) {
      holding += process.pid == pid ? 1 : 0;
    }
  }
  return holding;
}

/// The process as the snapshot shows it; empty with pid 0 when it does not.
ProcessSample processOf(const EngineSnapshot& snapshot, std::int32_t pid) {
  for (const AppGroup& group : snapshot.appGroups) {
    for (const ProcessSample& process : group.processes) {
      if (process.pid == pid) return process;
    }
  }
  return {};
}

/// A group of exactly these processes, as a tick shows them.
AppGroup groupOf(const EngineSnapshot& snapshot, const std::vector<std::int32_t>& pids) {
  AppGroup group;
  group.name = "children";
  for (const std::int32_t pid : pids) {
    group.processes.push_back(processOf(snapshot, pid));
  }
  return group;
}

/// A child that takes no notice of a polite signal.
ChildProcess stubbornChild() {
  return ChildProcess::prepared([] { std::signal(SIGTERM, SIG_IGN); });
}

TEST(OstrelEngineLive, ATickShowsThisVeryProcessInExactlyOneGroupWithItsMemory) {
  OstrelEngine engine(systemPlatformCalls());
  const std::vector<char> ballast(32U << 20U, 'x');

  const EngineSnapshot snapshot = engine.sampleTick({}, {});

  EXPECT_EQ(groupsHolding(snapshot, ::getpid()), 1);
  const ProcessSample self = processOf(snapshot, ::getpid());
  EXPECT_GT(self.memoryBytes, ballast.size());
  EXPECT_LT(self.memoryBytes, snapshot.system.memoryTotalBytes);
  EXPECT_EQ(self.ppid, ::getppid());
  EXPECT_EQ(self.uid, ::getuid());
  EXPECT_THAT(self.executablePath, ::testing::HasSubstr("engine_tests"));
}

TEST(OstrelEngineLive, ATickIsStampedWithThePresentAndTheInstalledMemory) {
  OstrelEngine engine(systemPlatformCalls());
  const Instant before = Instant::now();
  const EngineSnapshot snapshot = engine.sampleTick({}, {});
  const Instant after = Instant::now();

  EXPECT_LE(before, snapshot.system.timestamp);
  EXPECT_LE(snapshot.system.timestamp, after);
  EXPECT_EQ(snapshot.system.memoryTotalBytes, machineMemoryBytes());
  EXPECT_GT(snapshot.system.memoryTotalBytes, 0U);
}

TEST(OstrelEngineLive, EveryGroupHoldsAProcessAndItsMemoryIsTheSum) {
  OstrelEngine engine(systemPlatformCalls());
  const EngineSnapshot snapshot = engine.sampleTick({}, {});

  ASSERT_FALSE(snapshot.appGroups.empty());
  for (const AppGroup& group : snapshot.appGroups) {
    std::uint64_t sum = 0;
    for (const ProcessSample& process : group.processes) {
      sum += process.memoryBytes;
    }
    EXPECT_FALSE(group.processes.empty()) << group.id;
    EXPECT_EQ(group.memoryBytes, sum) << group.id;
  }
}

TEST(OstrelEngineLive, AProcessThatEndedIsGoneFromTheNextTick) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess child = ChildProcess::prepared();
  const std::int32_t pid = child.pid();
  EXPECT_EQ(groupsHolding(engine.sampleTick({}, {}), pid), 1);

  child.end();

  EXPECT_EQ(groupsHolding(engine.sampleTick({}, {}), pid), 0);
}

TEST(OstrelEngineLive, StopProcessSendsAPoliteSignal) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess child = ChildProcess::prepared();
  engine.sampleTick({}, {});

  EXPECT_TRUE(engine.stopProcess(child.pid(), false));

  EXPECT_EQ(child.waitForSignal(), SIGTERM);
}

TEST(OstrelEngineLive, StopProcessForcedEndsAProcessThatIgnoresThePoliteSignal) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess child = stubbornChild();
  engine.sampleTick({}, {});

  EXPECT_TRUE(engine.stopProcess(child.pid(), false));
  EXPECT_FALSE(child.hasEnded());
  EXPECT_TRUE(engine.stopProcess(child.pid(), true));

  EXPECT_EQ(child.waitForSignal(), SIGKILL);
}

TEST(OstrelEngineLive, StopProcessReachesNothingThatNoTickHasShown) {
  OstrelEngine engine(systemPlatformCalls());
  engine.sampleTick({}, {});
  const ChildProcess late = ChildProcess::prepared();

  EXPECT_FALSE(engine.stopProcess(late.pid(), true));

  EXPECT_FALSE(late.hasEnded());
}

TEST(OstrelEngineLive, QuitAppGroupStopsAllItsProcessesAndNoOther) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess first = ChildProcess::prepared();
  ChildProcess second = ChildProcess::prepared();
  const ChildProcess bystander = ChildProcess::prepared();
  const EngineSnapshot snapshot = engine.sampleTick({}, {});

  EXPECT_TRUE(engine.quitAppGroup(groupOf(snapshot, {first.pid(), second.pid()}), false));

  EXPECT_EQ(first.waitForSignal(), SIGTERM);
  EXPECT_EQ(second.waitForSignal(), SIGTERM);
  EXPECT_FALSE(bystander.hasEnded());
}

TEST(OstrelEngineLive, QuitAppGroupForcedEndsProcessesThatIgnoreThePoliteSignal) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess first = stubbornChild();
  ChildProcess second = stubbornChild();
  const EngineSnapshot snapshot = engine.sampleTick({}, {});

  EXPECT_TRUE(engine.quitAppGroup(groupOf(snapshot, {first.pid(), second.pid()}), true));

  EXPECT_EQ(first.waitForSignal(), SIGKILL);
  EXPECT_EQ(second.waitForSignal(), SIGKILL);
}

TEST(OstrelEngineLive, AMemberThatEndedSinceTheTickDoesNoHarm) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess gone = ChildProcess::prepared();
  ChildProcess alive = ChildProcess::prepared();
  const std::int32_t goneNumber = gone.pid();
  const AppGroup group = groupOf(engine.sampleTick({}, {}), {goneNumber, alive.pid()});

  gone.end();

  EXPECT_FALSE(engine.stopProcess(goneNumber, true));
  EXPECT_TRUE(engine.quitAppGroup(group, false));
  EXPECT_EQ(alive.waitForSignal(), SIGTERM);
  EXPECT_FALSE(engine.quitAppGroup(group, true)) << "both have ended by now";
}

TEST(OstrelEngineLive, StopIdleServersIsPoliteAndCounts) {
  OstrelEngine engine(systemPlatformCalls());
  ChildProcess server = ChildProcess::prepared();
  ChildProcess gone = ChildProcess::prepared();
  const ChildProcess stubborn = stubbornChild();
  std::vector<IdleServer> servers(3);
  servers[0].pid = server.pid();
  servers[1].pid = gone.pid();
  servers[2].pid = stubborn.pid();
  engine.sampleTick({}, {});
  gone.end();

  EXPECT_EQ(engine.stopIdleServers(servers), 2);

  EXPECT_EQ(server.waitForSignal(), SIGTERM);
  EXPECT_FALSE(stubborn.hasEnded()) << "an idle server is never forced";
}

TEST(OstrelEngineLive, TheSharedEngineTicksOverTheRealSystem) {
  const EngineSnapshot snapshot = OstrelEngine::shared().sampleTick({}, {});

  EXPECT_EQ(groupsHolding(snapshot, ::getpid()), 1);
}

}  // namespace
}  // namespace korvantis
