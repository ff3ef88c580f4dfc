#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/settings/AppearanceSettingsModel.h"

namespace korvantis {
namespace {

TEST(AppearanceSettingsModel, SaysWhatTheSystemsLookIs) {
  ScriptedStore scripted;
  AppearanceSettingsModel model;
  model.setLook(scripted.store().look());
  EXPECT_EQ(model.systemLookText(), QStringLiteral("macOS System is currently Dark"));
  QSignalSpy changed(&model, &AppearanceSettingsModel::systemLookTextChanged);
  scripted.systemIsDark = false;
  scripted.store().look()->syncAppearance();
  EXPECT_EQ(model.systemLookText(), QStringLiteral("macOS System is currently Light"));
  EXPECT_EQ(changed.size(), 1);
}

TEST(AppearanceSettingsModel, SaysWhatTheChosenLookMeans) {
  ScriptedStore scripted;
  LookStore& look = *scripted.store().look();
  AppearanceSettingsModel model;
  model.setLook(&look);
  EXPECT_EQ(model.themeModeText(), QStringLiteral("Matches macOS automatically"));
  look.setThemeMode(AppThemeMode::dark);
  EXPECT_EQ(model.themeModeText(), QStringLiteral("Always stay in Dark Mode"));
  look.setThemeMode(AppThemeMode::light);
  EXPECT_EQ(model.themeModeText(), QStringLiteral("Always stay in Light Mode"));
}

TEST(AppearanceSettingsModel, WithoutAStoreItSaysNothing) {
  EXPECT_EQ(AppearanceSettingsModel().systemLookText(), QString());
  EXPECT_EQ(AppearanceSettingsModel().themeModeText(), QString());
}

}  // namespace
}  // namespace korvantis
