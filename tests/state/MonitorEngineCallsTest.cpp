#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/ScriptedEngine.h"
#include "state/MonitorEngineCalls.h"

namespace korvantis {
namespace {

using test::ScriptedEngine;
using ::testing::ElementsAre;
using ::testing::Pair;

TEST(MonitorEngineCalls, QuestionsReachTheEngine) {
  ScriptedEngine scripted;
  scripted.collaborators.readHardwareInfo = [] {
    HardwareInfo hardware;
    hardware.chipName = "Chip";
    return hardware;
  };
  std::vector<double> since;
  scripted.collaborators.loadReadings = [&](Instant instant) {
    since.push_back(instant.secondsSince1970);
    return std::vector<Reading>(2);
  };
  scripted.collaborators.loadAppSummaries = [&](Instant instant) {
    since.push_back(instant.secondsSince1970);
    return std::vector<HistoricalAppSummary>(3);
  };
  scripted.collaborators.exportCSVToDownloads = [&](Instant instant) {
    since.push_back(instant.secondsSince1970);
    return ExportedCSVFiles{"a", "b"};
  };
  const MonitorEngineCalls calls = monitorEngineCalls(scripted.engine());

  EXPECT_EQ(calls.readHardwareInfo().chipName, "Chip");
  EXPECT_EQ(calls.loadReadings(Instant{1}).size(), 2U);
  EXPECT_EQ(calls.loadAppSummaries(Instant{2}).size(), 3U);
  EXPECT_EQ(calls.exportCSVToDownloads(Instant{3}), (ExportedCSVFiles{"a", "b"}));
  EXPECT_THAT(since, ElementsAre(1, 2, 3));
}

TEST(MonitorEngineCalls, ATickCarriesItsThreeArguments) {
  ScriptedEngine scripted;
  double hot = 0;
  std::size_t limits = 0;
  std::size_t mutes = 0;
  scripted.collaborators.evaluateInsights = [&](const auto&, const auto&, const auto&,
                                                const auto& appLimits, const auto& mutedApps,
                                                double hotCelsius) {
    hot = hotCelsius;
    limits = appLimits.size();
    mutes = mutedApps.size();
    return InsightEngine::Evaluation{};
  };
  scripted.collaborators.sampleSystem = [](const auto&) {
    SystemSample system;
    system.cpuPercent = 64;
    return system;
  };
  const MonitorEngineCalls calls = monitorEngineCalls(scripted.engine());

  EXPECT_EQ(
      calls.sampleTick(std::vector<AppLimit>(2), std::vector<MutedApp>(1), 71.5).system.cpuPercent,
      64);
  EXPECT_EQ(hot, 71.5);
  EXPECT_EQ(limits, 2U);
  EXPECT_EQ(mutes, 1U);
}

TEST(MonitorEngineCalls, ActionsReachTheEngine) {
  ScriptedEngine scripted;
  scripted.reachablePIDs = {41, 42, 43};
  std::vector<std::pair<std::int64_t, std::optional<double>>> fans;
  scripted.collaborators.setFanTarget = [&](std::int64_t fanID, std::optional<double> rpm) {
    fans.emplace_back(fanID, rpm);
    return true;
  };
  scripted.collaborators.evaluateQuitOfGroup = [](const AppGroup& group, const auto&) {
    QuitSafetyResult verdict;
    verdict.reason = group.name;
    return verdict;
  };
  const MonitorEngineCalls calls = monitorEngineCalls(scripted.engine());
  AppGroup group;
  group.name = "Tool";
  group.processes.push_back(test::processNamed(42, "tool"));
  IdleServer server;
  server.pid = 43;

  EXPECT_EQ(calls.checkQuitSafety(group).reason, "Tool");
  EXPECT_TRUE(calls.stopProcess(41, true));
  EXPECT_TRUE(calls.quitAppGroup(group, false));
  EXPECT_EQ(calls.stopIdleServers({server}), 1);
  EXPECT_TRUE(calls.setFanTarget(2, 1800.0));
  EXPECT_THAT(scripted.signals, ElementsAre(Pair(41, 9), Pair(42, 15), Pair(43, 15)));
  EXPECT_THAT(fans, ElementsAre(Pair(2, std::optional<double>(1800.0))));
}

}  // namespace
}  // namespace korvantis
