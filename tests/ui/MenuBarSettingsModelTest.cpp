#include <QSignalSpy>
#include <gtest/gtest.h>

#include "ui/ScriptedStore.h"
#include "ui/settings/MenuBarSettingsModel.h"

namespace korvantis {
namespace {

TEST(MenuBarSettingsModel, NamesTheReadoutsThatAreOnInTheirOrder) {
  ScriptedStore scripted;
  MenuBarSettingsModel model;
  model.setSettings(scripted.store().menuBarSettings());
  EXPECT_EQ(model.enabledReadouts(), QStringList({"cpu", "memory", "temperature", "power"}));
  QSignalSpy changed(&model, &MenuBarSettingsModel::enabledReadoutsChanged);
  model.toggle("gpu");
  EXPECT_EQ(model.enabledReadouts(), QStringList({"cpu", "memory", "gpu", "temperature", "power"}));
  EXPECT_EQ(changed.size(), 1);
}

TEST(MenuBarSettingsModel, TheLastReadoutStaysOnAndNothingIsNotified) {
  ScriptedStore scripted;
  scripted.store().menuBarSettings()->setEnabledReadouts({MenuBarReadout::fans});
  MenuBarSettingsModel model;
  model.setSettings(scripted.store().menuBarSettings());
  QSignalSpy changed(&model, &MenuBarSettingsModel::enabledReadoutsChanged);
  model.toggle("fans");
  EXPECT_EQ(model.enabledReadouts(), QStringList({"fans"}));
  EXPECT_EQ(changed.size(), 0);
}

TEST(MenuBarSettingsModel, ANameThatIsNoneChangesNothing) {
  ScriptedStore scripted;
  MenuBarSettingsModel model;
  model.toggle("cpu");
  EXPECT_EQ(model.enabledReadouts(), QStringList());
  model.setSettings(scripted.store().menuBarSettings());
  model.toggle("CPU");
  EXPECT_EQ(model.enabledReadouts(), QStringList({"cpu", "memory", "temperature", "power"}));
}

}  // namespace
}  // namespace korvantis
