#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/OverviewPaneModel.h"

namespace korvantis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

AppGroup makeApp(const std::string& name, std::uint64_t memoryBytes) {
  AppGroup group = makeGroup(name);
  group.kind = AppGroupKind::app;
  group.memoryBytes = memoryBytes;
  return group;
}

class OverviewPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  OverviewPaneModel model;
  QAbstractItemModelTester tester{model.largestApps(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal};

  void start() { model.setStore(&scripted.store()); }
  void tickWith(std::vector<AppGroup> groups) {
    scripted.next.appGroups = std::move(groups);
    scripted.tick();
  }
  std::vector<std::string> topApps() {
    std::vector<std::string> names;
    for (int place = 0; place < model.largestApps()->rowCount(); ++place) {
      const QVariant row = model.largestApps()->index(place).data(CardRowListModel::Row);
      names.push_back(row.value<CardRow>().name.toStdString());
    }
    return names;
  }
};

TEST_F(OverviewPaneModelTest, TheBannerIsNominalWhenNothingIsWrong) {
  start();
  EXPECT_EQ(model.state(), OverviewPaneModel::State::Nominal);
  EXPECT_EQ(model.headline(), scripted.store().whatsWrongHeadline());
}

TEST_F(OverviewPaneModelTest, ForgottenServersGiveTheirOwnState) {
  scripted.next.idleServers.resize(1);
  start();
  EXPECT_EQ(model.state(), OverviewPaneModel::State::ForgottenServers);
}

TEST_F(OverviewPaneModelTest, WithStrainAndIdleServersAtOnceTheBannerIsInTheStrainState) {
  scripted.next.idleServers.resize(1);
  scripted.next.activeStrains = {StrainKind::cpu};
  start();
  EXPECT_EQ(model.state(), OverviewPaneModel::State::Strain);
}

TEST_F(OverviewPaneModelTest, TheHeadlineFollowsTheTickAndTheUnitOfTemperatures) {
  start();
  const QString celsius = model.headline();
  scripted.store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_NE(model.headline(), celsius);
  EXPECT_EQ(model.headline(), scripted.store().whatsWrongHeadline());
  scripted.next.activeStrains = {StrainKind::cpu};
  scripted.tick();
  EXPECT_EQ(model.headline(), scripted.store().whatsWrongHeadline());
}

TEST_F(OverviewPaneModelTest, NamesTheChip) {
  scripted.hardware.chipName = "Chip";
  EXPECT_EQ(model.chipName(), QString());
  start();
  EXPECT_EQ(model.chipName(), QStringLiteral("Chip"));
}

TEST_F(OverviewPaneModelTest, OneIdleServerIsStoppedWithoutThePluralS) {
  scripted.next.idleServers.resize(1);
  start();
  EXPECT_EQ(model.stopServersText(), QStringLiteral("Stop 1 Idle Server"));
  scripted.next.idleServers.resize(3);
  scripted.tick();
  EXPECT_EQ(model.stopServersText(), QStringLiteral("Stop 3 Idle Servers"));
}

TEST_F(OverviewPaneModelTest, UnderStrainNoStopButtonIsOffered) {
  scripted.next.idleServers.resize(2);
  scripted.next.activeStrains = {StrainKind::cpu};
  start();
  EXPECT_EQ(model.stopServersText(), QString());
}

TEST_F(OverviewPaneModelTest, ATickThatChangesNothingNotifiesNobody) {
  scripted.next.system.cpuPercent = 5;
  start();
  int changes = 0;
  for (const auto signal :
       {&OverviewPaneModel::cpuChanged, &OverviewPaneModel::memoryChanged,
        &OverviewPaneModel::networkChanged, &OverviewPaneModel::batteryChanged,
        &OverviewPaneModel::topAppsChanged, &OverviewPaneModel::headlineChanged}) {
    QObject::connect(&model, signal, [&changes] { ++changes; });
  }
  scripted.next.system.timestamp = Instant{2000};
  scripted.tick();
  EXPECT_EQ(scripted.store().snapshot().system.timestamp, Instant{2000});
  EXPECT_EQ(changes, 0);
  scripted.next.system.gpuPercent = 60;
  scripted.tick();
  EXPECT_EQ(changes, 0);
  scripted.next.system.cpuUserPercent = 6;
  scripted.tick();
  EXPECT_EQ(changes, 1);
}

TEST_F(OverviewPaneModelTest, QuittingAnApplicationAsksNoQuestionAndUsesNoForce) {
  scripted.next.appGroups = {makeGroup("Editor")};
  start();
  model.quitApp(QString::fromStdString(scripted.next.appGroups[0].id));
  ASSERT_EQ(scripted.quitGroups.size(), 1U);
  EXPECT_EQ(scripted.quitGroups[0].first, scripted.next.appGroups[0].id);
  EXPECT_FALSE(scripted.quitGroups[0].second);
  model.quitApp(QStringLiteral("gone"));
  EXPECT_EQ(scripted.quitGroups.size(), 1U);
}

TEST_F(OverviewPaneModelTest, TheLargestAppsChangePlacesWithoutEnteringAnew) {
  scripted.next.appGroups = {makeApp("a", 3), makeApp("b", 2), makeApp("c", 1)};
  start();
  EXPECT_THAT(topApps(), ElementsAre("a", "b", "c"));
  QSignalSpy moved(model.largestApps(), &QAbstractItemModel::rowsMoved);
  QSignalSpy inserted(model.largestApps(), &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(model.largestApps(), &QAbstractItemModel::rowsRemoved);
  tickWith({makeApp("a", 3), makeApp("b", 2), makeApp("c", 4)});
  EXPECT_THAT(topApps(), ElementsAre("c", "a", "b"));
  EXPECT_EQ(moved.size(), 1);
  EXPECT_EQ(inserted.size() + removed.size(), 0);
}

TEST_F(OverviewPaneModelTest, ATickWithTheSameAppsSaysNothingOfTheirList) {
  scripted.next.appGroups = {makeApp("a", 3)};
  start();
  QSignalSpy changed(model.largestApps(), &QAbstractItemModel::dataChanged);
  tickWith({makeApp("a", 3)});
  EXPECT_EQ(changed.size(), 0);
  tickWith({makeApp("a", 2048)});
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(model.largestApps()->index(0).data(CardRowListModel::Row).value<CardRow>().figure,
            QStringLiteral("2 KB"));
}

TEST_F(OverviewPaneModelTest, WhileAButtonIsPressedATickLeavesTheAppsAndLaterTheyCatchUp) {
  scripted.next.appGroups = {makeApp("a", 2), makeApp("b", 1)};
  start();
  model.hold();
  tickWith({makeApp("c", 9)});
  EXPECT_THAT(topApps(), ElementsAre("a", "b"));
  EXPECT_EQ(model.topApps().headline, QStringLiteral("1 Apps Active"));
  model.release();
  EXPECT_THAT(topApps(), ElementsAre("a", "b"));
  QCoreApplication::processEvents();
  EXPECT_THAT(topApps(), ElementsAre("c"));
}

TEST_F(OverviewPaneModelTest, APressThatEndsWithoutAStoreChangesNothing) {
  scripted.next.appGroups = {makeApp("a", 2)};
  start();
  model.hold();
  model.setStore(nullptr);
  model.release();
  QCoreApplication::processEvents();
  EXPECT_THAT(topApps(), ElementsAre("a"));
}

TEST_F(OverviewPaneModelTest, TheDiskLineIsTheSumOfBothRingsWithTheTickInThem) {
  start();
  scripted.next.system.diskReadBytesPerSec = 300;
  scripted.next.system.diskWriteBytesPerSec = 50;
  scripted.next.system.timestamp = Instant{2000};
  scripted.tick();
  EXPECT_EQ(model.diskHistory().size(), scripted.store().diskReadHistory().size());
  EXPECT_EQ(model.diskHistory().last(), 350);
}

TEST_F(OverviewPaneModelTest, TheHeatLimitAndTheUnitTakeEffectAtOnce) {
  scripted.next.system.thermal.hottestCelsius = 70;
  start();
  EXPECT_FALSE(model.thermal().isHot);
  scripted.store().look()->setHotThresholdCelsius(70);
  EXPECT_TRUE(model.thermal().isHot);
  scripted.store().look()->setTemperatureUnit(TemperatureUnit::fahrenheit);
  EXPECT_EQ(model.thermal().hottestText, QStringLiteral("158°F"));
}

TEST_F(OverviewPaneModelTest, AWishForASpeedGoesToTheFirstFanAndTo0WithNone) {
  start();
  model.applyManualRPM(2500);
  scripted.next.system.thermal.fans.resize(2);
  scripted.next.system.thermal.fans[0].id = 3;
  scripted.tick();
  model.applyManualRPM(4000);
  model.restoreAutomaticFan();
  using Wish = std::pair<std::int64_t, std::optional<double>>;
  EXPECT_THAT(scripted.fanWishes, ElementsAre(Wish{0, 2500}, Wish{3, 4000}, Wish{3, std::nullopt}));
}

TEST_F(OverviewPaneModelTest, WithoutAStoreNothingCanBeDone) {
  model.quitApp(QStringLiteral("daemon:a"));
  model.applyManualRPM(2500);
  model.restoreAutomaticFan();
  EXPECT_THAT(topApps(), IsEmpty());
  EXPECT_THAT(scripted.fanWishes, IsEmpty());
}

}  // namespace
}  // namespace korvantis
