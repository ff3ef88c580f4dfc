#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "engine/ScriptedEngine.h"

namespace korvantis {
namespace {

using test::processNamed;
using test::ScriptedEngine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Makes `call` write `name` down before it answers as before.
template <typename Result, typename... Arguments>
void record(std::vector<std::string>& steps, std::function<Result(Arguments...)>& call,
            const std::string& name) {
  call = [&steps, name, answer = call](Arguments... arguments) -> Result {
    steps.push_back(name);
    return answer(std::forward<Arguments>(arguments)...);
  };
}

/// Makes every step of a tick write its name down.
void recordSteps(std::vector<std::string>& steps, ScriptedEngine& scripted) {
  CollaboratorCalls& calls = scripted.collaborators;
  record(steps, scripted.platform.clock.now, "now");
  record(steps, scripted.platform.processInfo.physicalMemory, "physicalMemory");
  record(steps, calls.readPerPIDGPUTime, "readPerPIDGPUTime");
  record(steps, calls.sampleProcesses, "sampleProcesses");
  record(steps, calls.sampleContainers, "sampleContainers");
  record(steps, calls.groupProjects, "groupProjects");
  record(steps, calls.group, "group");
  record(steps, calls.sampleSystem, "sampleSystem");
  record(steps, calls.evaluateServers, "evaluateServers");
  record(steps, calls.evaluateInsights, "evaluateInsights");
  record(steps, calls.scanAgentsAndLimits, "scanAgentsAndLimits");
  record(steps, calls.sampleSleepBlockers, "sampleSleepBlockers");
  record(steps, calls.sampleBluetoothPeripherals, "sampleBluetoothPeripherals");
  record(steps, calls.sampleMountedVolumes, "sampleMountedVolumes");
  record(steps, calls.recordSample, "recordSample");
}

TEST(OstrelEngineTick, RunsEveryStepOnceInItsOrder) {
  ScriptedEngine scripted;
  std::vector<std::string> steps;
  recordSteps(steps, scripted);
  scripted.engine();
  steps.clear();  // what its history asked for

  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(steps, ElementsAre("now", "readPerPIDGPUTime", "sampleProcesses", "sampleContainers",
                                 "physicalMemory", "groupProjects", "group", "sampleSystem",
                                 "evaluateServers", "evaluateInsights", "scanAgentsAndLimits",
                                 "sampleSleepBlockers", "sampleBluetoothPeripherals",
                                 "sampleMountedVolumes", "recordSample"));
}

TEST(OstrelEngineTick, RunsEveryStepAgainOnTheNextTickWhateverTheInterval) {
  ScriptedEngine scripted;
  std::vector<std::string> steps;
  recordSteps(steps, scripted);
  scripted.engine();
  steps.clear();  // what its history asked for

  scripted.engine().sampleTick({}, {});
  const std::vector<std::string> first = std::exchange(steps, {});
  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(steps, first);
}

TEST(OstrelEngineTick, HandsTheGPUTimesToTheProcessSampler) {
  ScriptedEngine scripted;
  GPUTimeByPID seen;
  scripted.collaborators.readPerPIDGPUTime = [] { return GPUTimeByPID{{7, 70}, {8, 80}}; };
  scripted.collaborators.sampleProcesses = [&](const GPUTimeByPID& gpuTimes) {
    seen = gpuTimes;
    return std::vector<ProcessSample>{};
  };

  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(seen, (GPUTimeByPID{{7, 70}, {8, 80}}));
}

TEST(OstrelEngineTick, HandsProcessesContainersAndMemoryToTheProjectLocator) {
  ScriptedEngine scripted;
  scripted.physicalMemory = 16ULL << 30U;
  ContainerSample container;
  container.id = "c1";
  scripted.collaborators.sampleProcesses = [](const auto&) {
    return std::vector{processNamed(7, "node")};
  };
  scripted.collaborators.sampleContainers = [&] { return std::vector{container}; };
  int calls = 0;
  scripted.collaborators.groupProjects = [&](const auto& processes, const auto& containers,
                                             std::uint64_t totalMemory) {
    ++calls;
    EXPECT_THAT(processes, ElementsAre(processNamed(7, "node")));
    EXPECT_THAT(containers, ElementsAre(container));
    EXPECT_EQ(totalMemory, 16ULL << 30U);
    return std::vector<DevProject>{};
  };

  const EngineSnapshot snapshot = scripted.engine().sampleTick({}, {});

  EXPECT_EQ(calls, 1);
  EXPECT_THAT(snapshot.containers, ElementsAre(container));
}

TEST(OstrelEngineTick, AsksForThePhysicalMemoryAnewOnEachTick) {
  ScriptedEngine scripted;
  std::vector<std::uint64_t> seen;
  scripted.collaborators.group = [&](const auto&, std::uint64_t totalMemory) {
    seen.push_back(totalMemory);
    return std::vector<AppGroup>{};
  };

  scripted.physicalMemory = 1;
  scripted.engine().sampleTick({}, {});
  scripted.physicalMemory = 2;
  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(seen, ElementsAre(1, 2));
}

TEST(OstrelEngineTick, EveryStepAfterTheProjectsSeesTheProjectPathsWrittenByThem) {
  ScriptedEngine scripted;
  CollaboratorCalls& calls = scripted.collaborators;
  calls.sampleProcesses = [](const auto&) { return std::vector{processNamed(7, "node")}; };
  calls.groupProjects = [](auto& processes, const auto&, auto) {
    processes.at(0).projectPath = "/home/ada/shop";
    return std::vector<DevProject>{};
  };
  std::vector<std::string> seen;
  const auto see = [&](const std::string& step, const std::vector<ProcessSample>& processes) {
    seen.push_back(step + " " + processes.at(0).projectPath.value_or("nothing"));
  };
  calls.group = [&](const auto& processes, auto) {
    see("group", processes);
    return std::vector<AppGroup>{};
  };
  calls.evaluateServers = [&](const auto& processes, const auto&) {
    see("evaluateServers", processes);
    return ServerWatcher::Evaluation{};
  };
  calls.scanAgentsAndLimits = [&](const auto& processes) {
    see("scanAgentsAndLimits", processes);
    return AgentScanner::Scan{};
  };
  calls.evaluateQuitOfProcess = [&](auto, const auto& processes, const auto&) {
    see("checkQuitSafety", processes);
    return QuitSafetyResult{};
  };

  scripted.engine().sampleTick({}, {});
  scripted.engine().checkQuitSafety(7);

  EXPECT_THAT(seen,
              ElementsAre("group /home/ada/shop", "evaluateServers /home/ada/shop",
                          "scanAgentsAndLimits /home/ada/shop", "checkQuitSafety /home/ada/shop"));
}

TEST(OstrelEngineTick, NamesTheFirstGroupAsNeuralEngineFallback) {
  ScriptedEngine scripted;
  std::optional<std::string> topName;
  scripted.collaborators.group = [](const auto&, auto) {
    std::vector<AppGroup> groups(2);
    groups[0].name = "Editor";
    groups[1].name = "Browser";
    return groups;
  };
  scripted.collaborators.sampleSystem = [&](const auto& name) {
    topName = name;
    return SystemSample{};
  };

  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(topName, "Editor");
}

TEST(OstrelEngineTick, WithNoProcessesTheTopNameIsAbsentAndTheSnapshotWellFormed) {
  ScriptedEngine scripted;
  std::optional<std::string> topName = "not asked";
  scripted.collaborators.sampleSystem = [&](const auto& name) {
    topName = name;
    SystemSample system;
    system.cpuPercent = 12.5;
    return system;
  };

  const EngineSnapshot snapshot = scripted.engine().sampleTick({}, {});

  EXPECT_EQ(topName, std::nullopt);
  EXPECT_THAT(snapshot.appGroups, IsEmpty());
  EXPECT_EQ(snapshot.system.cpuPercent, 12.5);
}

TEST(OstrelEngineTick, WithNoProcessesItsOwnCollaboratorsGiveAWellFormedSnapshot) {
  ScriptedEngine scripted;
  scripted.now = 1234.5;
  scripted.physicalMemory = 8ULL << 30U;
  OstrelEngine engine(scripted.platform);

  const EngineSnapshot snapshot = engine.sampleTick({}, {});

  EXPECT_THAT(snapshot.appGroups, IsEmpty());
  EXPECT_THAT(snapshot.projects, IsEmpty());
  EXPECT_THAT(snapshot.idleServers, IsEmpty());
  EXPECT_THAT(snapshot.listeningPorts, IsEmpty());
  EXPECT_THAT(snapshot.agentSessions, IsEmpty());
  EXPECT_EQ(snapshot.planLimits.size(), 2U) << "they stand there without any agent";
  EXPECT_EQ(snapshot.system.timestamp, Instant{1234.5});
  EXPECT_EQ(snapshot.system.memoryTotalBytes, 8ULL << 30U);
}

TEST(OstrelEngineTick, ForwardsLimitsMutesAndHotThresholdAsGiven) {
  ScriptedEngine scripted;
  std::vector<AppLimit> limits(2);
  limits[1].appID = "com.example.editor";
  std::vector<MutedApp> mutes(1);
  mutes[0].appID = "com.example.chat";
  int calls = 0;
  scripted.collaborators.evaluateInsights = [&](const auto&, const auto&, const auto&,
                                                const auto& appLimits, const auto& mutedApps,
                                                double hotCelsius) {
    ++calls;
    EXPECT_EQ(appLimits, limits);
    EXPECT_EQ(mutedApps, mutes);
    EXPECT_EQ(hotCelsius, 91.5);
    return InsightEngine::Evaluation{};
  };

  scripted.engine().sampleTick(limits, mutes, 91.5);

  EXPECT_EQ(calls, 1);
}

TEST(OstrelEngineTick, CountsAsHotFrom85DegreesWhenNothingElseIsSaid) {
  ScriptedEngine scripted;
  double seen = 0;
  scripted.collaborators.evaluateInsights = [&](const auto&, const auto&, const auto&, const auto&,
                                                const auto&, double hotCelsius) {
    seen = hotCelsius;
    return InsightEngine::Evaluation{};
  };

  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(seen, 85.0);
}

/// Raises one limit insight per limit that it is given.
InsightEngine::Evaluation oneInsightPerLimit(const std::vector<AppLimit>& limits) {
  InsightEngine::Evaluation evaluation;
  for (const AppLimit& limit : limits) {
    Insight& insight = evaluation.newInsights.emplace_back();
    insight.kind = InsightKind::appLimit;
    insight.targetAppID = limit.appID;
  }
  return evaluation;
}

TEST(OstrelEngineTick, ABridgeTickRaisesNoLimitInsightBecauseItsLimitsAreEmpty) {
  ScriptedEngine scripted;
  scripted.collaborators.evaluateInsights = [](const auto&, const auto&, const auto&,
                                               const auto& appLimits, const auto&,
                                               double) { return oneInsightPerLimit(appLimits); };
  AppLimit limit;
  limit.appID = "com.example.editor";

  EXPECT_EQ(scripted.engine().sampleTick({limit}, {}).newInsights.size(), 1U);
  EXPECT_THAT(scripted.engine().sampleTick({}, {}, 82.0).newInsights, IsEmpty());
}

TEST(OstrelEngineTick, TheEnginesOwnRulesJudgeItAtTheTimeOfTheClockAndKeepTheirMemory) {
  ScriptedEngine scripted;
  OstrelEngine engine(scripted.platform);
  constexpr double alwaysHot = -1000;
  const EngineSnapshot first = engine.sampleTick({}, {}, alwaysHot);
  ASSERT_EQ(first.newInsights.size(), 1U);
  EXPECT_EQ(first.newInsights[0].kind, InsightKind::runningHot);
  EXPECT_EQ(first.newInsights[0].createdAt, Instant{scripted.now});
  EXPECT_THAT(first.activeStrains, ::testing::Contains(StrainKind::temperature));

  scripted.now += 599;
  EXPECT_EQ(engine.sampleTick({}, {}, alwaysHot).newInsights, first.newInsights);
  scripted.now += 1;
  EXPECT_EQ(engine.sampleTick({}, {}, alwaysHot).newInsights.size(), 2U);
}

TEST(OstrelEngineTick, SystemSampleGroupsAndIdleServersGoIntoTheInsights) {
  ScriptedEngine scripted;
  SystemSample system;
  system.cpuPercent = 42;
  std::vector<AppGroup> groups(1);
  groups[0].name = "Editor";
  std::vector<IdleServer> idle(1);
  idle[0].pid = 9;
  scripted.collaborators.sampleSystem = [&](const auto&) { return system; };
  scripted.collaborators.group = [&](const auto&, auto) { return groups; };
  scripted.collaborators.evaluateServers = [&](const auto&, const auto& appGroups) {
    EXPECT_EQ(appGroups, groups);
    return ServerWatcher::Evaluation{.idleServers = idle, .listeningPorts = {}};
  };
  int calls = 0;
  scripted.collaborators.evaluateInsights = [&](const auto& seenSystem, const auto& seenGroups,
                                                const auto& seenIdle, const auto&, const auto&,
                                                double) {
    ++calls;
    EXPECT_EQ(seenSystem, system);
    EXPECT_EQ(seenGroups, groups);
    EXPECT_EQ(seenIdle, idle);
    return InsightEngine::Evaluation{};
  };

  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(calls, 1);
}

TEST(OstrelEngineTick, SystemSampleAndGroupsGoIntoTheHistory) {
  ScriptedEngine scripted;
  SystemSample system;
  system.cpuPercent = 42;
  std::vector<AppGroup> groups(3);
  groups[2].name = "Editor";
  scripted.collaborators.sampleSystem = [&](const auto&) { return system; };
  scripted.collaborators.group = [&](const auto&, auto) { return groups; };
  int calls = 0;
  scripted.collaborators.recordSample = [&](const auto& seenSystem, const auto& seenGroups,
                                            double) {
    ++calls;
    EXPECT_EQ(seenSystem, system);
    EXPECT_EQ(seenGroups, groups);
  };

  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(calls, 1);
}

/// A snapshot with a telling entry in every list.
EngineSnapshot fullSnapshot() {
  EngineSnapshot full;
  full.system.cpuPercent = 61;
  full.appGroups.resize(2);
  full.appGroups[0].name = "Editor";
  full.projects.resize(1);
  full.projects[0].path = "/home/ada/shop";
  full.containers.resize(1);
  full.containers[0].id = "c1";
  full.idleServers.resize(1);
  full.idleServers[0].pid = 11;
  full.listeningPorts.resize(1);
  full.listeningPorts[0].port = 3000;
  full.newInsights.resize(1);
  full.newInsights[0].title = "Busy";
  full.activeStrains = {StrainKind::gpu, StrainKind::cpu};
  full.agentSessions.resize(1);
  full.agentSessions[0].pid = 12;
  full.planLimits.resize(1);
  full.planLimits[0].tool = "A tool";
  full.sleepBlockers.resize(1);
  full.sleepBlockers[0].pid = 13;
  full.bluetoothDevices.resize(1);
  full.bluetoothDevices[0].name = "Mouse";
  full.volumes.resize(1);
  full.volumes[0].path = "/";
  return full;
}

TEST(OstrelEngineTick, TheSnapshotHoldsWhatEachStepGave) {
  ScriptedEngine scripted;
  const EngineSnapshot full = fullSnapshot();
  CollaboratorCalls& calls = scripted.collaborators;
  calls.sampleContainers = [&] { return full.containers; };
  calls.groupProjects = [&](auto&, const auto&, auto) { return full.projects; };
  calls.group = [&](const auto&, auto) { return full.appGroups; };
  calls.sampleSystem = [&](const auto&) { return full.system; };
  calls.evaluateServers = [&](const auto&, const auto&) {
    return ServerWatcher::Evaluation{full.idleServers, full.listeningPorts};
  };
  calls.evaluateInsights = [&](const auto&, const auto&, const auto&, const auto&, const auto&,
                               double) {
    return InsightEngine::Evaluation{full.newInsights, full.activeStrains};
  };
  calls.scanAgentsAndLimits = [&](const auto&) {
    return AgentScanner::Scan{full.agentSessions, full.planLimits};
  };
  calls.sampleSleepBlockers = [&] { return full.sleepBlockers; };
  calls.sampleBluetoothPeripherals = [&] { return full.bluetoothDevices; };
  calls.sampleMountedVolumes = [&] { return full.volumes; };

  EXPECT_EQ(scripted.engine().sampleTick({}, {}), full);
}

TEST(OstrelEngineTick, QuitChecksInsideEveryStepFindNoLockHeld) {
  ScriptedEngine scripted;
  std::vector<std::string> steps;
  recordSteps(steps, scripted);
  int checks = 0;
  bool isTicking = false;
  const auto check = [&] {
    if (!isTicking) return;
    scripted.engine().checkQuitSafety(1);
    scripted.engine().checkQuitSafety(AppGroup{});
    ++checks;
  };
  CollaboratorCalls& calls = scripted.collaborators;
  const auto wrap = [&](auto& call) {
    call = [answer = call, check](auto&&... arguments) {
      check();
      return answer(std::forward<decltype(arguments)>(arguments)...);
    };
  };
  wrap(scripted.platform.processInfo.physicalMemory);
  wrap(scripted.platform.clock.now);
  wrap(calls.readPerPIDGPUTime);
  wrap(calls.sampleProcesses);
  wrap(calls.sampleContainers);
  wrap(calls.groupProjects);
  wrap(calls.group);
  wrap(calls.sampleSystem);
  wrap(calls.evaluateServers);
  wrap(calls.evaluateInsights);
  wrap(calls.scanAgentsAndLimits);
  wrap(calls.sampleSleepBlockers);
  wrap(calls.sampleBluetoothPeripherals);
  wrap(calls.sampleMountedVolumes);
  wrap(calls.recordSample);

  scripted.engine();
  isTicking = true;
  scripted.engine().sampleTick({}, {});

  EXPECT_EQ(checks, 15);
}

TEST(OstrelEngineTick, KeepsItsListsAfterTheLastSampleAndBeforeTheHistory) {
  ScriptedEngine scripted;
  CollaboratorCalls& calls = scripted.collaborators;
  calls.sampleProcesses = [](const auto&) { return std::vector{processNamed(7, "node")}; };
  calls.sampleSleepBlockers = [] { return std::vector<SleepBlocker>(1); };
  std::vector<std::string> seen;
  calls.evaluateQuitOfProcess = [&](auto, const auto& processes, const auto& blockers) {
    seen.push_back(std::to_string(processes.size()) + " and " + std::to_string(blockers.size()));
    return QuitSafetyResult{};
  };
  calls.sampleMountedVolumes = [&] {
    scripted.engine().checkQuitSafety(7);
    return std::vector<MountedVolume>{};
  };
  calls.recordSample = [&](const auto&, const auto&, double) {
    scripted.engine().checkQuitSafety(7);
  };

  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(seen, ElementsAre("0 and 0", "1 and 1"));
}

}  // namespace
}  // namespace korvantis
