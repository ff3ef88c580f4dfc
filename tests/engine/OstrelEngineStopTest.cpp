#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/ScriptedEngine.h"

namespace korvantis {
namespace {

using test::processNamed;
using test::ScriptedApplication;
using test::ScriptedEngine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Signal = ScriptedEngine::Signal;

constexpr const char* editor = "com.example.editor";

AppGroup groupOf(const std::vector<std::int32_t>& pids) {
  AppGroup group;
  group.name = "Editor";
  for (const std::int32_t pid : pids) {
    group.processes.push_back(processNamed(pid, "editor"));
  }
  return group;
}

AppGroup editorGroup(const std::vector<std::int32_t>& pids) {
  AppGroup group = groupOf(pids);
  group.bundleIdentifier = editor;
  return group;
}

constexpr ScriptedApplication willing{};
constexpr ScriptedApplication refusing{.acceptsTerminate = false, .acceptsForceTerminate = false};

std::vector<IdleServer> serversWithPIDs(const std::vector<std::int32_t>& pids) {
  std::vector<IdleServer> servers;
  for (const std::int32_t pid : pids) {
    servers.emplace_back().pid = pid;
  }
  return servers;
}

TEST(OstrelEngineQuitAppGroup, AsksItsInstancesPolitelyAndSendsNoSignal) {
  ScriptedEngine scripted;
  scripted.applicationsByIdentifier[editor] = {willing, willing};
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().quitAppGroup(editorGroup({7}), false));

  EXPECT_THAT(scripted.requests,
              ElementsAre("terminate com.example.editor", "terminate com.example.editor"));
  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineQuitAppGroup, ForcedAsksItsInstancesToForceTerminate) {
  ScriptedEngine scripted;
  scripted.applicationsByIdentifier[editor] = {willing};

  EXPECT_TRUE(scripted.engine().quitAppGroup(editorGroup({7}), true));

  EXPECT_THAT(scripted.requests, ElementsAre("forceTerminate com.example.editor"));
  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineQuitAppGroup, AnInstanceThatRefusesFallsThroughToSignalsForAllProcesses) {
  ScriptedEngine scripted;
  scripted.applicationsByIdentifier[editor] = {refusing};
  scripted.reachablePIDs = {7, 8, 9};

  EXPECT_TRUE(scripted.engine().quitAppGroup(editorGroup({7, 8, 9}), false));

  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}, Signal{8, 15}, Signal{9, 15}));
}

TEST(OstrelEngineQuitAppGroup, TriesAllInstancesEvenAfterOneRefuses) {
  ScriptedEngine scripted;
  scripted.applicationsByIdentifier[editor] = {refusing, willing, willing};
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().quitAppGroup(editorGroup({7}), false));

  EXPECT_EQ(scripted.requests.size(), 3U);
  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}));
}

TEST(OstrelEngineQuitAppGroup, OneRefusalAmongManyInstancesLeadsToSignals) {
  ScriptedEngine scripted;
  scripted.applicationsByIdentifier[editor] = {willing, refusing};

  EXPECT_FALSE(scripted.engine().quitAppGroup(editorGroup({7}), false));

  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}));
}

TEST(OstrelEngineQuitAppGroup, UsesForceTerminateAndSignal9OnlyWhenForced) {
  // It accepts only the kind of request that must not be used.
  ScriptedEngine forced;
  forced.applicationsByIdentifier[editor] = {
      {.acceptsTerminate = true, .acceptsForceTerminate = false}};
  forced.reachablePIDs = {7, 8};
  EXPECT_TRUE(forced.engine().quitAppGroup(editorGroup({7, 8}), true));
  EXPECT_THAT(forced.requests, ElementsAre("forceTerminate com.example.editor"));
  EXPECT_THAT(forced.signals, ElementsAre(Signal{7, 9}, Signal{8, 9}));

  ScriptedEngine polite;
  polite.applicationsByIdentifier[editor] = {
      {.acceptsTerminate = false, .acceptsForceTerminate = true}};
  polite.reachablePIDs = {7, 8};
  EXPECT_TRUE(polite.engine().quitAppGroup(editorGroup({7, 8}), false));
  EXPECT_THAT(polite.requests, ElementsAre("terminate com.example.editor"));
  EXPECT_THAT(polite.signals, ElementsAre(Signal{7, 15}, Signal{8, 15}));
}

TEST(OstrelEngineQuitAppGroup, WithoutAnInstanceItSendsSignals) {
  ScriptedEngine scripted;
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().quitAppGroup(editorGroup({7}), false));

  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}));
}

TEST(OstrelEngineQuitAppGroup, WithoutABundleIdentifierItAsksNoApplication) {
  ScriptedEngine scripted;
  scripted.applicationsByIdentifier[""] = {willing};
  scripted.applicationsByPID[7] = willing;
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().quitAppGroup(groupOf({7}), true));

  EXPECT_THAT(scripted.requests, IsEmpty());
  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 9}));
}

TEST(OstrelEngineQuitAppGroup, OneSignalThatArrivesIsEnoughWhereverItStands) {
  for (const std::int32_t reachable : {7, 8, 9}) {
    ScriptedEngine scripted;
    scripted.reachablePIDs = {reachable};

    EXPECT_TRUE(scripted.engine().quitAppGroup(groupOf({7, 8, 9}), false)) << reachable;

    EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}, Signal{8, 15}, Signal{9, 15}));
  }
}

TEST(OstrelEngineQuitAppGroup, IsFalseWhenNoSignalArrives) {
  ScriptedEngine scripted;

  EXPECT_FALSE(scripted.engine().quitAppGroup(groupOf({7, 8}), true));

  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 9}, Signal{8, 9}));
}

TEST(OstrelEngineQuitAppGroup, IsFalseForAGroupWithoutProcesses) {
  ScriptedEngine scripted;

  EXPECT_FALSE(scripted.engine().quitAppGroup(groupOf({}), false));
  EXPECT_FALSE(scripted.engine().quitAppGroup(editorGroup({}), true));

  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineQuitAppGroup, NeverSignalsAProcessGroupOrEverybody) {
  ScriptedEngine scripted;
  scripted.reachablePIDs = {0, -1, -7, 7};

  EXPECT_FALSE(scripted.engine().quitAppGroup(groupOf({0, -1, -7}), true));
  EXPECT_THAT(scripted.signals, IsEmpty());

  EXPECT_TRUE(scripted.engine().quitAppGroup(groupOf({0, -1, 7, -7}), true));
  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 9}));
}

TEST(OstrelEngineStopProcess, AsksTheApplicationPolitelyAndSendsNoSignal) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[7] = willing;
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().stopProcess(7, false));

  EXPECT_THAT(scripted.requests, ElementsAre("terminate pid 7"));
  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineStopProcess, ForcedAsksTheApplicationToForceTerminate) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[7] = willing;

  EXPECT_TRUE(scripted.engine().stopProcess(7, true));

  EXPECT_THAT(scripted.requests, ElementsAre("forceTerminate pid 7"));
  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineStopProcess, AnApplicationThatRefusesIsSignalled) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[7] = refusing;
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().stopProcess(7, false));
  EXPECT_TRUE(scripted.engine().stopProcess(7, true));

  EXPECT_THAT(scripted.requests, ElementsAre("terminate pid 7", "forceTerminate pid 7"));
  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}, Signal{7, 9}));
}

TEST(OstrelEngineStopProcess, AProcessWithoutApplicationIsSignalled) {
  ScriptedEngine scripted;
  scripted.reachablePIDs = {7};

  EXPECT_TRUE(scripted.engine().stopProcess(7, false));
  EXPECT_TRUE(scripted.engine().stopProcess(7, true));

  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}, Signal{7, 9}));
}

TEST(OstrelEngineStopProcess, IsFalseWhenTheSignalDoesNotArrive) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[8] = refusing;

  EXPECT_FALSE(scripted.engine().stopProcess(7, false));
  EXPECT_FALSE(scripted.engine().stopProcess(8, true));
}

TEST(OstrelEngineStopProcess, NeverSignalsAProcessGroupOrEverybody) {
  ScriptedEngine scripted;
  scripted.reachablePIDs = {0, -1, -7, std::numeric_limits<std::int32_t>::min()};

  for (const std::int32_t pid : scripted.reachablePIDs) {
    EXPECT_FALSE(scripted.engine().stopProcess(pid, false)) << pid;
    EXPECT_FALSE(scripted.engine().stopProcess(pid, true)) << pid;
  }

  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineStopIdleServers, OfThreeServersOfWhichOneRefusesBothWaysTwoStop) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[7] = willing;
  scripted.applicationsByPID[8] = refusing;
  scripted.reachablePIDs = {9};

  EXPECT_EQ(scripted.engine().stopIdleServers(serversWithPIDs({7, 8, 9})), 2);

  EXPECT_THAT(scripted.requests, ElementsAre("terminate pid 7", "terminate pid 8"));
  EXPECT_THAT(scripted.signals, ElementsAre(Signal{8, 15}, Signal{9, 15}));
}

TEST(OstrelEngineStopIdleServers, ARefusingServerThatTheSignalReachesCounts) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[8] = refusing;
  scripted.reachablePIDs = {8};

  EXPECT_EQ(scripted.engine().stopIdleServers(serversWithPIDs({8})), 1);
}

TEST(OstrelEngineStopIdleServers, NeverForces) {
  ScriptedEngine scripted;
  scripted.applicationsByPID[7] = {.acceptsTerminate = false, .acceptsForceTerminate = true};

  EXPECT_EQ(scripted.engine().stopIdleServers(serversWithPIDs({7, 8})), 0);

  EXPECT_THAT(scripted.requests, ElementsAre("terminate pid 7"));
  EXPECT_THAT(scripted.signals, ElementsAre(Signal{7, 15}, Signal{8, 15}));
}

TEST(OstrelEngineStopIdleServers, StopsNoneOfNone) {
  ScriptedEngine scripted;
  EXPECT_EQ(scripted.engine().stopIdleServers({}), 0);
}

TEST(OstrelEngineStopIdleServers, NeverSignalsAProcessGroupOrEverybody) {
  ScriptedEngine scripted;
  scripted.reachablePIDs = {0, -1};

  EXPECT_EQ(scripted.engine().stopIdleServers(serversWithPIDs({0, -1})), 0);

  EXPECT_THAT(scripted.signals, IsEmpty());
}

TEST(OstrelEngineStop, AQuitCheckInsideASignalFindsNoLockHeld) {
  ScriptedEngine scripted;
  int checks = 0;
  scripted.platform.posix.kill = [&](auto, auto) {
    scripted.engine().checkQuitSafety(7);
    ++checks;
    return 0;
  };

  scripted.engine().stopProcess(7, false);
  scripted.engine().quitAppGroup(groupOf({7}), false);
  scripted.engine().stopIdleServers(serversWithPIDs({7}));

  EXPECT_EQ(checks, 3);
}

}  // namespace
}  // namespace korvantis
