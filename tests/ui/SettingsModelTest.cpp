#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/settings/SettingsModel.h"

namespace korvantis {
namespace {

TEST(SettingsModel, OffersTheThreeIntervals) {
  const QList<Choice> intervals = SettingsModel().intervals();
  ASSERT_EQ(intervals.size(), 3);
  EXPECT_EQ(intervals[0].label, QStringLiteral("1 second"));
  EXPECT_DOUBLE_EQ(intervals[0].value, 1);
  EXPECT_EQ(intervals[1].label, QStringLiteral("2 seconds"));
  EXPECT_DOUBLE_EQ(intervals[1].value, 2);
  EXPECT_EQ(intervals[2].label, QStringLiteral("5 seconds"));
  EXPECT_DOUBLE_EQ(intervals[2].value, 5);
}

TEST(SettingsModel, SaysWhatTheSystemsLookIs) {
  ScriptedStore scripted;
  SettingsModel model;
  model.setLook(scripted.store().look());
  EXPECT_EQ(model.systemLookText(), QStringLiteral("macOS System is currently Dark"));
  QSignalSpy changed(&model, &SettingsModel::systemLookTextChanged);
  scripted.systemIsDark = false;
  scripted.store().look()->syncAppearance();
  EXPECT_EQ(model.systemLookText(), QStringLiteral("macOS System is currently Light"));
  EXPECT_EQ(changed.size(), 1);
}

TEST(SettingsModel, SaysWhatTheChosenLookMeans) {
  ScriptedStore scripted;
  LookStore& look = *scripted.store().look();
  SettingsModel model;
  model.setLook(&look);
  EXPECT_EQ(model.themeModeText(), QStringLiteral("Matches macOS automatically"));
  look.setThemeMode(AppThemeMode::dark);
  EXPECT_EQ(model.themeModeText(), QStringLiteral("Always stay in Dark Mode"));
  look.setThemeMode(AppThemeMode::light);
  EXPECT_EQ(model.themeModeText(), QStringLiteral("Always stay in Light Mode"));
}

TEST(SettingsModel, WithoutAStoreItSaysNothing) {
  EXPECT_EQ(SettingsModel().systemLookText(), QString());
  EXPECT_EQ(SettingsModel().themeModeText(), QString());
}

}  // namespace
}  // namespace korvantis
