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

}  // namespace
}  // namespace korvantis
