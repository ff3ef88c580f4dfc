#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/panes/OverviewPaneModel.h"

namespace korvantis {
namespace {

class OverviewPaneModelTest : public testing::Test {
 protected:
  ScriptedStore scripted;
  OverviewPaneModel model;

  void start() { model.setStore(&scripted.store()); }
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

}  // namespace
}  // namespace korvantis
