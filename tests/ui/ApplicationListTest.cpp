#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/ApplicationList.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class ApplicationListTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  ApplicationList list;

  void start(std::vector<AppGroup> groups) {
    scripted.next.appGroups = std::move(groups);
    list.setStore(&scripted.store());
  }
  void tick(std::vector<AppGroup> groups) {
    scripted.next.appGroups = std::move(groups);
    scripted.tick();
  }
  std::vector<std::string> names() {
    std::vector<std::string> names;
    for (int index = 0; index < list.rows()->rowCount(); ++index) {
      names.push_back(list.rows()->rowAt(index)->name.toStdString());
    }
    return names;
  }
};

AppGroup withMemory(AppGroup group, std::uint64_t bytes) {
  group.memoryBytes = bytes;
  return group;
}

TEST_F(ApplicationListTest, FollowsEachTick) {
  start({makeGroup("a")});
  EXPECT_THAT(names(), ElementsAre("a"));
  tick({makeGroup("b"), makeGroup("a")});
  EXPECT_THAT(names(), ElementsAre("b", "a"));
  EXPECT_EQ(list.groupCount(), 2);
}

TEST_F(ApplicationListTest, KeepsTheEnginesOrderUnlessItFollowsThePicker) {
  start({withMemory(makeGroup("small"), 1), withMemory(makeGroup("large"), 2)});
  EXPECT_THAT(names(), ElementsAre("small", "large"));
  list.setFollowsPicker(true);
  EXPECT_THAT(names(), ElementsAre("large", "small"));
}

TEST_F(ApplicationListTest, FollowsTheFilterAndTheSortFieldAtOnce) {
  AppGroup busy = withMemory(makeGroup("busy"), 1);
  busy.cpuPercent = 90;
  start({busy, withMemory(makeGroup("large"), 2)});
  list.setFollowsPicker(true);
  scripted.store().setProcessSortField(ProcessSortField::cpu);
  EXPECT_THAT(names(), ElementsAre("busy", "large"));
  scripted.store().setProcessSearchText(QStringLiteral("LAR"));
  EXPECT_THAT(names(), ElementsAre("large"));
}

TEST_F(ApplicationListTest, OpeningShowsTheProcessesAndClosingHidesThem) {
  start({makeGroup("app", {makeProcess(1, "one"), makeProcess(2, "two")})});
  list.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_THAT(names(), ElementsAre("app", "one", "two"));
  EXPECT_THAT(scripted.store().expandedAppGroupIDs(), ElementsAre("daemon:app"));
  list.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_THAT(names(), ElementsAre("app"));
}

TEST_F(ApplicationListTest, AnOpenedRowStaysOpenInAnotherList) {
  start({makeGroup("app", {makeProcess(1, "one")})});
  list.toggleExpanded(QStringLiteral("daemon:app"));
  ApplicationList other;
  other.setStore(&scripted.store());
  EXPECT_EQ(other.rows()->rowCount(), 2);
}

TEST_F(ApplicationListTest, AnIdOfAGoneGroupLeavesAHarmlessEntry) {
  start({makeGroup("app", {makeProcess(1, "one")})});
  list.toggleExpanded(QStringLiteral("daemon:app"));
  tick({makeGroup("other")});
  EXPECT_THAT(names(), ElementsAre("other"));
  EXPECT_THAT(scripted.store().expandedAppGroupIDs(), ElementsAre("daemon:app"));
}

TEST_F(ApplicationListTest, QuittingHandsOnTheGroupOfThePresentSnapshot) {
  start({makeGroup("app")});
  EXPECT_TRUE(list.quitGroup(QStringLiteral("daemon:app"), false));
  EXPECT_TRUE(list.quitGroup(QStringLiteral("daemon:app"), true));
  EXPECT_THAT(scripted.quitGroups,
              ElementsAre(Pair("daemon:app", false), Pair("daemon:app", true)));
}

TEST_F(ApplicationListTest, QuittingAGroupThatIsGoneDoesNothing) {
  start({makeGroup("app")});
  tick({});
  EXPECT_FALSE(list.quitGroup(QStringLiteral("daemon:app"), true));
  EXPECT_THAT(scripted.quitGroups, IsEmpty());
}

TEST_F(ApplicationListTest, StopsTheProcessOfTheRowPolitely) {
  start({makeGroup("app", {makeProcess(41, "one"), makeProcess(42, "two")})});
  list.toggleExpanded(QStringLiteral("daemon:app"));
  EXPECT_TRUE(list.stopProcess(2));
  EXPECT_THAT(scripted.stoppedProcesses, ElementsAre(Pair(42, false)));
}

TEST_F(ApplicationListTest, AGroupRowAndARowOutsideTheListStopNothing) {
  start({makeGroup("app", {makeProcess(41, "one")})});
  EXPECT_FALSE(list.stopProcess(0));
  EXPECT_FALSE(list.stopProcess(7));
  EXPECT_FALSE(list.stopProcess(-1));
  EXPECT_THAT(scripted.stoppedProcesses, IsEmpty());
}

/// The list no longer follows, as if the click came between the tick and the screen.
TEST_F(ApplicationListTest, ARecycledPidIsNotStopped) {
  start({makeGroup("app", {makeProcess(42, "one")})});
  list.toggleExpanded(QStringLiteral("daemon:app"));
  ProcessSample recycled = makeProcess(42, "another");
  recycled.startedAt = Instant{9999};
  bool stopped = true;
  QObject::disconnect(&scripted.store(), nullptr, &list, nullptr);
  QObject::connect(&scripted.store(), &MonitorStore::snapshotChanged,
                   [&] { stopped = list.stopProcess(1); });
  tick({makeGroup("app", {recycled})});
  EXPECT_FALSE(stopped);
  EXPECT_THAT(scripted.stoppedProcesses, IsEmpty());
}

}  // namespace
}  // namespace korvantis
