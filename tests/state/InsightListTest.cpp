#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <vector>

#include "state/InsightList.h"
#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using InsightList::merged;
using test::insight;
using ::testing::ElementsAre;

constexpr double week = 604800;

TEST(InsightList, ASameKindAndTargetIsDroppedEvenAgainstAWeekOldEntryWithOtherText) {
  Insight old = insight(InsightKind::sustainedCPU, "app", 1000);
  old.detail = "busy for 5 minutes";
  Insight again = insight(InsightKind::sustainedCPU, "app", 1000 + week);
  again.detail = "busy for 9 minutes";
  again.metricText = "140%";

  EXPECT_THAT(merged({old}, {again}, {}), ElementsAre(old));
}

TEST(InsightList, AnotherKindOrAnotherTargetEnters) {
  const Insight old = insight(InsightKind::sustainedCPU, "app", 1000);
  const Insight otherKind = insight(InsightKind::memoryGrowth, "app", 1001);
  const Insight otherTarget = insight(InsightKind::sustainedCPU, "tool", 1002);
  const Insight noTarget = insight(InsightKind::sustainedCPU, std::nullopt, 1003);

  EXPECT_THAT(merged({old}, {otherKind, otherTarget, noTarget}, {}),
              ElementsAre(noTarget, otherTarget, otherKind, old));
}

TEST(InsightList, OfTwoNewOnesWithAbsentTargetsAndTheSameKindTheFirstEnters) {
  const Insight first = insight(InsightKind::memoryPressure, std::nullopt, 1000);
  const Insight second = insight(InsightKind::memoryPressure, std::nullopt, 1001);

  EXPECT_THAT(merged({}, {first, second}, {}), ElementsAre(first));
}

TEST(InsightList, AnAbsentTargetIsNotAnEmptyOne) {
  const Insight absent = insight(InsightKind::memoryPressure, std::nullopt, 1000);
  const Insight empty = insight(InsightKind::memoryPressure, "", 1001);

  EXPECT_THAT(merged({absent}, {empty}, {}), ElementsAre(empty, absent));
}

TEST(InsightList, OneWhoseIdIsPinnedSortsAsPinnedThoughItsMarkIsOff) {
  const Insight old = insight(InsightKind::runningHot, std::nullopt, 1000);
  const Insight recent = insight(InsightKind::diskBurst, "app", 2000);

  EXPECT_FALSE(old.isPinned);
  EXPECT_THAT(merged({recent, old}, {}, {old.id}), ElementsAre(old, recent));
}

TEST(InsightList, OneWhoseMarkIsOnSortsAsPinnedThoughItsIdIsNot) {
  Insight old = insight(InsightKind::runningHot, std::nullopt, 1000);
  old.isPinned = true;
  const Insight recent = insight(InsightKind::diskBurst, "app", 2000);

  EXPECT_THAT(merged({recent, old}, {}, {}), ElementsAre(old, recent));
}

TEST(InsightList, PinnedOnesComeFirstAndBothGroupsAreSortedNewestFirst) {
  const Insight a = insight(InsightKind::runningHot, "a", 1000);
  const Insight b = insight(InsightKind::runningHot, "b", 2000);
  const Insight c = insight(InsightKind::runningHot, "c", 3000);
  const Insight d = insight(InsightKind::runningHot, "d", 4000);

  EXPECT_THAT(merged({a, b, c, d}, {}, {a.id, c.id}), ElementsAre(c, a, d, b));
}

TEST(InsightList, EqualsKeepTheirOrderAndNewOnesStandBeforeThem) {
  const Insight a = insight(InsightKind::runningHot, "a", 1000);
  const Insight b = insight(InsightKind::runningHot, "b", 1000);
  const Insight c = insight(InsightKind::runningHot, "c", 1000);
  const Insight d = insight(InsightKind::runningHot, "d", 1000);

  EXPECT_THAT(merged({b, a}, {}, {}), ElementsAre(b, a));
  EXPECT_THAT(merged({b, a}, {c, d}, {}), ElementsAre(d, c, b, a));
}

std::vector<Insight> manyInsights(int count) {
  std::vector<Insight> many;
  for (int index = 0; index < count; ++index)
    many.push_back(insight(InsightKind::appLimit, std::to_string(index), 1000 + index));
  return many;
}

TEST(InsightList, EightyEntriesAllStay) {
  EXPECT_EQ(merged({}, manyInsights(80), {}).size(), 80U);
}

TEST(InsightList, Of81EntriesTheOldestUnpinnedOneFallsOff) {
  const std::vector<Insight> many = manyInsights(81);
  const std::vector<Insight> kept = merged({}, many, {many[0].id});

  ASSERT_EQ(kept.size(), 80U);
  EXPECT_EQ(kept.front(), many[0]);
  EXPECT_EQ(kept.back(), many[2]);
  EXPECT_EQ(std::count(kept.begin(), kept.end(), many[1]), 0);
}

TEST(InsightList, Of81PinnedEntriesTheOldestPinnedOneFallsOff) {
  const std::vector<Insight> many = manyInsights(81);
  std::set<Uuid> pinned;
  for (const Insight& each : many) pinned.insert(each.id);
  const std::vector<Insight> kept = merged({}, many, pinned);

  ASSERT_EQ(kept.size(), 80U);
  EXPECT_EQ(kept.front(), many[80]);
  EXPECT_EQ(kept.back(), many[1]);
}

}  // namespace
}  // namespace korvantis
