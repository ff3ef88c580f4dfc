#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "engine/ScriptedEngine.h"

namespace korvantis {
namespace {

using test::ScriptedEngine;
using ::testing::ElementsAre;

/// Collects the seconds that each tick hands to the history.
std::vector<double>& recordElapsed(ScriptedEngine& scripted, std::vector<double>& elapsed) {
  scripted.collaborators.recordSample = [&elapsed](const auto&, const auto&, double seconds) {
    elapsed.push_back(seconds);
  };
  return elapsed;
}

TEST(OstrelEngineTick, TheFirstTickHasTwoSecondsWhateverTheClockSays) {
  for (const double clock : {-5.0, 0.0, 1.75e9}) {
    ScriptedEngine scripted;
    std::vector<double> elapsed;
    recordElapsed(scripted, elapsed);
    scripted.now = clock;

    scripted.engine().sampleTick({}, {});

    EXPECT_THAT(elapsed, ElementsAre(2.0)) << clock;
  }
}

TEST(OstrelEngineTick, OfTwoTicksATenthOfASecondApartTheSecondPassesHalfASecond) {
  ScriptedEngine scripted;
  std::vector<double> elapsed;
  recordElapsed(scripted, elapsed);

  scripted.engine().sampleTick({}, {});
  scripted.now += 0.1;
  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(elapsed, ElementsAre(2.0, 0.5));
}

TEST(OstrelEngineTick, PassesTheWholeTimeSinceTheLastTick) {
  ScriptedEngine scripted;
  std::vector<double> elapsed;
  recordElapsed(scripted, elapsed);

  for (const double step : {0.0, 0.5, 0.75, 7200.0}) {
    scripted.now += step;
    scripted.engine().sampleTick({}, {});
  }

  EXPECT_THAT(elapsed, ElementsAre(2.0, 0.5, 0.75, 7200.0));
}

TEST(OstrelEngineTick, AClockThatWasSetBackPassesHalfASecond) {
  ScriptedEngine scripted;
  std::vector<double> elapsed;
  recordElapsed(scripted, elapsed);

  scripted.engine().sampleTick({}, {});
  scripted.now -= 3600;
  scripted.engine().sampleTick({}, {});
  scripted.now += 2;
  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(elapsed, ElementsAre(2.0, 0.5, 2.0));
}

TEST(OstrelEngineTick, MeasuresFromTheBeginningOfTheLastTickNotItsEnd) {
  ScriptedEngine scripted;
  std::vector<double> elapsed;
  recordElapsed(scripted, elapsed);
  scripted.collaborators.sampleContainers = [&] {
    scripted.now += 3;  // a tick that takes three seconds
    return std::vector<ContainerSample>{};
  };

  scripted.engine().sampleTick({}, {});
  scripted.now += 1;
  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(elapsed, ElementsAre(2.0, 4.0));
}

TEST(OstrelEngineTick, ATickThatBeginsInsideAnotherMeasuresFromThatOnesBeginning) {
  ScriptedEngine scripted;
  std::vector<double> elapsed;
  recordElapsed(scripted, elapsed);
  bool nested = false;
  scripted.collaborators.readPerPIDGPUTime = [&] {
    if (!std::exchange(nested, true)) {
      scripted.now += 1.25;
      scripted.engine().sampleTick({}, {}, 82.0);
    }
    return GPUTimeByPID{};
  };

  scripted.engine().sampleTick({}, {});
  scripted.now += 3;
  scripted.engine().sampleTick({}, {});

  EXPECT_THAT(elapsed, ElementsAre(1.25, 2.0, 3.0));
}

}  // namespace
}  // namespace korvantis
