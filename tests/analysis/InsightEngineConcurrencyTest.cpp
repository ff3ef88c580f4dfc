#include <algorithm>
#include <atomic>
#include <barrier>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "analysis/InsightFixtures.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;

using Evaluations = std::vector<InsightEngine::Evaluation>;

/// What one of two callers hands in on each of its ticks.
struct Caller {
  std::vector<AppLimit> limits;
  std::vector<MutedApp> mutes;
  double hotCelsius = 82;
  Evaluations evaluations;
};

constexpr int ticksEach = 20;
constexpr int busyAppCount = 12;

/// A warm machine with busy applications; the last of them is at 60 percent only.
std::vector<AppGroup> warmGroups() {
  std::vector<AppGroup> groups;
  groups.reserve(busyAppCount + 1);
  for (int number = 0; number < busyAppCount; ++number) {
    groups.push_back(busyApp("App " + std::to_string(number), 300));
  }
  groups.push_back(busyApp("Editor", 60));
  return groups;
}

/// Lets both callers tick at once against one new engine, whose clock goes on with every tick.
void tickTogether(Caller& first, Caller& second) {
  std::atomic<int> time = 1'700'000'000;
  InsightEngine engine(Clock{[&time] { return static_cast<double>(++time); }}, systemRandomCalls());
  SystemSample system;
  system.thermal.hottestCelsius = 75;
  const std::vector<AppGroup> groups = warmGroups();
  std::barrier start(2);
  const auto run = [&](Caller& caller) {
    start.arrive_and_wait();
    for (int tick = 0; tick < ticksEach; ++tick) {
      caller.evaluations.push_back(
          engine.evaluate(system, groups, {}, caller.limits, caller.mutes, caller.hotCelsius));
    }
  };
  const std::jthread other([&] { run(second); });
  run(first);
}

/// The user's timer, with a limit, a mute and a low heat limit, and the bridge, with nothing.
class InsightEngineConcurrent : public ::testing::Test {
 protected:
  void SetUp() override {
    AppLimit limit;
    limit.id = Uuid::random();
    limit.appName = "editor";
    limit.limit = 50;
    limit.minutes = 0;
    timer.limits = {limit};
    timer.mutes = {mute(appNamed("App 3"))};
    timer.hotCelsius = 70;
    tickTogether(timer, bridge);
  }

  /// Everything that either of them was told, by identifier.
  std::map<Uuid, Insight> told() const {
    std::map<Uuid, Insight> found;
    for (const Caller* caller : {&timer, &bridge}) {
      for (const auto& evaluation : caller->evaluations) {
        for (const Insight& insight : evaluation.newInsights) found.emplace(insight.id, insight);
      }
    }
    return found;
  }

  Caller timer;
  Caller bridge;
};

TEST_F(InsightEngineConcurrent, TwoCallersWithDifferentLimitsAndMutesTellEachFindingOnce) {
  std::vector<std::string> titles;
  for (const auto& [id, insight] : told()) titles.push_back(insight.title);
  std::vector<std::string> expected{"Editor passed CPU % limit", "Mac is running warm (75°C)"};
  for (int number = 0; number < busyAppCount; ++number) {
    expected.push_back("App " + std::to_string(number) + " using high CPU");
  }
  EXPECT_THAT(titles, UnorderedElementsAreArray(expected));
}

TEST_F(InsightEngineConcurrent, NoEvaluationBeginsInsideAnother) {
  // Whoever came first told of all applications that it may speak of, all at its own moment.
  std::set<double> moments;
  for (const auto& [id, insight] : told()) {
    if (insight.kind == InsightKind::sustainedCPU && insight.targetAppName != "App 3") {
      moments.insert(insight.createdAt.secondsSince1970);
    }
  }
  EXPECT_THAT(moments, SizeIs(1));
}

TEST_F(InsightEngineConcurrent, EachCallerSeesItsFindingsGrowAtTheFrontOnly) {
  for (const Caller* caller : {&timer, &bridge}) {
    std::vector<Insight> before;
    for (const auto& evaluation : caller->evaluations) {
      const auto& list = evaluation.newInsights;
      ASSERT_GE(list.size(), before.size());
      EXPECT_TRUE(std::equal(before.rbegin(), before.rend(), list.rbegin()));
      before = list;
    }
  }
}

TEST_F(InsightEngineConcurrent, EachCallerGetsTheStrainsOfItsOwnHeatLimit) {
  for (const auto& evaluation : timer.evaluations) {
    EXPECT_THAT(evaluation.activeStrains, ElementsAre(StrainKind::temperature));
  }
  for (const auto& evaluation : bridge.evaluations) {
    EXPECT_THAT(evaluation.activeStrains, IsEmpty());
  }
}

}  // namespace
}  // namespace korvantis
