#include "ui/settings/MenuBarSettingsModel.h"

#include "state/ObservableField.h"

namespace korvantis {

void MenuBarSettingsModel::setSettings(MenuBarSettingsStore* settings) {
  if (settings_ == settings) return;
  if (settings_) settings_->disconnect(this);
  settings_ = settings;
  if (settings_) {
    connect(settings_, &MenuBarSettingsStore::enabledReadoutsChanged, this,
            &MenuBarSettingsModel::enabledReadoutsChanged);
  }
  emit settingsChanged();
  emit enabledReadoutsChanged();
}

QStringList MenuBarSettingsModel::enabledReadouts() const {
  QStringList names;
  if (!settings_) return names;
  for (const MenuBarReadout readout : settings_->enabledReadouts()) names.append(caseText(readout));
  return names;
}

void MenuBarSettingsModel::toggle(const QString& readout) {
  const auto wanted = caseOfText<MenuBarReadout>(readout);
  if (settings_ && wanted) settings_->toggle(*wanted);
}

}  // namespace korvantis
