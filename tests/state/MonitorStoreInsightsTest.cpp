#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

#include "state/ScriptedMonitor.h"

namespace korvantis {
namespace {

using test::insight;
using test::ScriptedMonitor;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A store that lists an old and a recent finding, the recent one first.
class MonitorStoreInsights : public ::testing::Test {
 protected:
  MonitorStoreInsights() {
    monitor.nextSnapshot.newInsights = {recent, old};
    monitor.store();
    monitor.nextSnapshot.newInsights.clear();
  }

  MonitorStore& store() { return monitor.store(); }

  const Insight old = insight(InsightKind::diskBurst, "/Applications/Mail.app", 1000);
  const Insight recent = insight(InsightKind::runningHot, std::nullopt, 2000);
  ScriptedMonitor monitor;
};

Insight pinned(Insight insight) {
  insight.isPinned = true;
  return insight;
}

TEST_F(MonitorStoreInsights, FindingsOfATickAreListedNewestFirst) {
  EXPECT_THAT(store().insights(), ElementsAre(recent, old));
}

TEST_F(MonitorStoreInsights, AFindingThatIsListedIsNotRefreshedByItsRepetition) {
  Insight again = insight(InsightKind::diskBurst, "/Applications/Mail.app", 3000);
  again.detail = "more of it";
  monitor.nextSnapshot.newInsights = {again};
  const QSignalSpy spy(&store(), &MonitorStore::insightsChanged);
  store().refreshTick();

  EXPECT_THAT(store().insights(), ElementsAre(recent, old));
  EXPECT_EQ(spy.count(), 0);
}

TEST_F(MonitorStoreInsights, PinningDoesNotMoveTheEntryUntilTheNextTick) {
  store().togglePinInsight(old);
  EXPECT_THAT(store().insights(), ElementsAre(recent, pinned(old)));
  EXPECT_THAT(store().pinnedInsightIDs(), ElementsAre(old.id));

  store().refreshTick();
  EXPECT_THAT(store().insights(), ElementsAre(pinned(old), recent));
}

TEST_F(MonitorStoreInsights, PinningTwiceUnpins) {
  store().togglePinInsight(old);
  store().refreshTick();
  store().togglePinInsight(pinned(old));
  EXPECT_THAT(store().insights(), ElementsAre(old, recent));
  EXPECT_THAT(store().pinnedInsightIDs(), IsEmpty());

  store().refreshTick();
  EXPECT_THAT(store().insights(), ElementsAre(recent, old));
}

TEST_F(MonitorStoreInsights, PinningOneThatIsNotListedKeepsItsIdOnly) {
  const Insight unlisted = insight(InsightKind::appLimit, "tool", 500);
  const QSignalSpy spy(&store(), &MonitorStore::insightsChanged);
  store().togglePinInsight(unlisted);
  EXPECT_THAT(store().pinnedInsightIDs(), ElementsAre(unlisted.id));
  EXPECT_THAT(store().insights(), ElementsAre(recent, old));
  EXPECT_EQ(spy.count(), 0);

  monitor.nextSnapshot.newInsights = {unlisted};
  store().refreshTick();
  EXPECT_THAT(store().insights(), ElementsAre(unlisted, recent, old));
}

TEST_F(MonitorStoreInsights, DismissingRemovesTheEntryAndItsPin) {
  store().togglePinInsight(old);
  store().dismissInsight(old);

  EXPECT_THAT(store().insights(), ElementsAre(recent));
  EXPECT_THAT(store().pinnedInsightIDs(), IsEmpty());
}

TEST_F(MonitorStoreInsights, DismissingAnEntryOfTheListItselfIsSafe) {
  store().dismissInsight(store().insights().front());
  EXPECT_THAT(store().insights(), ElementsAre(old));
  store().togglePinInsight(store().insights().front());
  EXPECT_THAT(store().insights(), ElementsAre(pinned(old)));
}

TEST_F(MonitorStoreInsights, ADismissedFindingThatIsStillRecentComesBackAtItsSortedPlace) {
  const Insight newest = insight(InsightKind::networkBurst, "tool", 3000);
  monitor.nextSnapshot.newInsights = {newest};
  store().refreshTick();
  const Insight again = insight(InsightKind::runningHot, std::nullopt, 2500);
  store().dismissInsight(recent);
  EXPECT_THAT(store().insights(), ElementsAre(newest, old));

  monitor.nextSnapshot.newInsights = {again};
  store().refreshTick();
  EXPECT_THAT(store().insights(), ElementsAre(newest, again, old));
}

TEST_F(MonitorStoreInsights, ClearingKeepsWhatIsPinnedEitherWayInItsOrder) {
  const Insight marked = pinned(insight(InsightKind::networkBurst, "tool", 500));
  monitor.nextSnapshot.newInsights = {marked};
  store().togglePinInsight(old);
  store().refreshTick();
  EXPECT_THAT(store().insights(), ElementsAre(pinned(old), marked, recent));
  store().clearUnpinnedInsights();

  EXPECT_THAT(store().insights(), ElementsAre(pinned(old), marked));
  EXPECT_THAT(store().pinnedInsightIDs(), ElementsAre(old.id));
}

TEST_F(MonitorStoreInsights, PinDismissAndClearNotifyExactlyOnARealChange) {
  const QSignalSpy list(&store(), &MonitorStore::insightsChanged);
  const QSignalSpy ids(&store(), &MonitorStore::pinnedInsightIDsChanged);
  store().togglePinInsight(old);
  EXPECT_EQ(list.count(), 1);
  EXPECT_EQ(ids.count(), 1);
  store().dismissInsight(recent);
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(ids.count(), 1);
  store().dismissInsight(recent);
  store().clearUnpinnedInsights();
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(ids.count(), 1);
}

TEST_F(MonitorStoreInsights, WhenPinnedOnesFallOffTheirIdsStay) {
  monitor.nextSnapshot.newInsights.clear();
  for (int index = 0; index < 79; ++index) {
    monitor.nextSnapshot.newInsights.push_back(
        pinned(insight(InsightKind::appLimit, std::to_string(index), 5000 + index)));
  }
  store().togglePinInsight(old);
  store().togglePinInsight(recent);
  store().refreshTick();

  EXPECT_EQ(store().insights().size(), 80U);
  EXPECT_EQ(store().insights().back(), pinned(recent));
  EXPECT_TRUE(store().pinnedInsightIDs().contains(old.id));
}

}  // namespace
}  // namespace korvantis
