#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bridge/BridgeCommands.h"
#include "engine/ScriptedEngine.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

using test::ScriptedEngine;
using test::ScriptedProcesses;
using ::testing::ElementsAre;

constexpr std::int32_t worker = 42;

/// The bridge's commands over an engine with one process, whose load the test decides.
class OstrelEngineBridgeTick : public ::testing::Test {
 protected:
  ScriptedProcesses table;
  LibProcSampler sampler{table.platform()};
  AppGrouper grouper{PropertyListCalls()};
  ScriptedEngine scripted;
  std::vector<double> recordedSeconds;
  std::vector<double> hotThresholds;

  OstrelEngineBridgeTick() {
    table.setNow(1000);
    table.add({.pid = worker, .name = "worker", .path = "/usr/bin/worker"});
    scripted.collaborators.sampleProcesses = [this](const GPUTimeByPID& times) {
      return sampler.sampleProcesses(times);
    };
    scripted.collaborators.group = [this](const auto& processes, std::uint64_t memory) {
      return grouper.group(processes, memory);
    };
    scripted.collaborators.recordSample = [this](const auto&, const auto&, double seconds) {
      recordedSeconds.push_back(seconds);
    };
    scripted.collaborators.evaluateInsights = [this](const auto&, const auto&, const auto&,
                                                     const auto&, const auto&, double hot) {
      hotThresholds.push_back(hot);
      return InsightEngine::Evaluation{};
    };
  }

  /// Lets time pass in which the process keeps `cores` cores busy.
  void pass(double seconds, double cores) {
    scripted.now += seconds;
    table.advance(seconds);
    table.change(worker, [=](test::ScriptedProcess& process) {
      process.userTime += static_cast<std::uint64_t>(seconds * cores * 1e9);
    });
  }

  /// The tick of the timer.
  void tick() { scripted.engine().sampleTick({}, {}, 90.0); }

  /// The load of the process as a client of the bridge sees it.
  double askedCPUPercent() {
    const BridgeCommands commands(
        [this](const std::vector<AppLimit>& limits, const std::vector<MutedApp>& mutes,
               double hot) { return scripted.engine().sampleTick(limits, mutes, hot); });
    const std::string reply = commands("top", nlohmann::json::object()).text().value_or("");
    return nlohmann::json::parse(reply).at("apps").at(0).at("cpuPercent").get<double>();
  }
};

TEST_F(OstrelEngineBridgeTick, AMutedAppAt300PercentRaisesAnInsightThroughABridgeRequest) {
  InsightEngine insights(Clock{[this] { return scripted.now; }}, systemRandomCalls());
  std::vector<std::ptrdiff_t> told;
  scripted.collaborators.group = [this](const auto& processes, std::uint64_t memory) {
    std::vector<AppGroup> groups = grouper.group(processes, memory);
    for (AppGroup& group : groups) group.kind = AppGroupKind::app;
    return groups;
  };
  scripted.collaborators.evaluateInsights = [&](const auto& system, const auto& groups,
                                                const auto& servers, const auto& limits,
                                                const auto& mutes, double hot) {
    auto evaluation = insights.evaluate(system, groups, servers, limits, mutes, hot);
    told.push_back(
        std::ranges::count(evaluation.newInsights, InsightKind::sustainedCPU, &Insight::kind));
    return evaluation;
  };
  const EngineSnapshot snapshot = scripted.engine().sampleTick({}, {}, 90.0);
  MutedApp mute;
  mute.appID = snapshot.appGroups.at(0).id;
  for (int round = 0; round < 20; ++round) {
    pass(2, 3);
    scripted.engine().sampleTick({}, {mute}, 90.0);
  }
  EXPECT_EQ(told.back(), 0);
  pass(2, 3);
  EXPECT_NEAR(askedCPUPercent(), 300, 0.01);
  EXPECT_EQ(told.back(), 1);
  // The request has spent the finding's cooldown for everybody.
  pass(2, 3);
  tick();
  EXPECT_EQ(told.back(), 1);
}

TEST_F(OstrelEngineBridgeTick, TheFirstRequestAfterAnHourWhileTheTimerRunsGetsNormalFigures) {
  for (int round = 0; round < 1800; ++round) {
    pass(2, 0.5);
    tick();
  }
  pass(1, 0.5);
  EXPECT_NEAR(askedCPUPercent(), 50, 0.01);
}

TEST_F(OstrelEngineBridgeTick, OfTwoRequestsInQuickSuccessionTheSecondMeasuresTheTimeBetweenThem) {
  tick();
  pass(2, 0.5);
  EXPECT_NEAR(askedCPUPercent(), 50, 0.01);
  pass(0.25, 1);
  EXPECT_NEAR(askedCPUPercent(), 100, 0.01) << "of a quarter of a second, not of two";
}

TEST_F(OstrelEngineBridgeTick, TheTimersNextTickMeasuresTheTimeSinceTheRequest) {
  tick();
  pass(1.5, 0.5);
  askedCPUPercent();
  pass(0.75, 0.5);
  tick();
  EXPECT_THAT(recordedSeconds, ElementsAre(2.0, 1.5, 0.75));
}

TEST_F(OstrelEngineBridgeTick, EveryRequestIsARealTickThatIsRecordedAndJudgedAt82Degrees) {
  tick();
  pass(3, 0.5);
  askedCPUPercent();
  pass(3, 0.5);
  tick();
  EXPECT_EQ(recordedSeconds.size(), 3U);
  EXPECT_THAT(hotThresholds, ElementsAre(90.0, 82.0, 90.0));
}

}  // namespace
}  // namespace korvantis
