#include "ui/settings/AppearanceSettingsModel.h"

namespace korvantis {

void AppearanceSettingsModel::setLook(LookStore* look) {
  if (look_ == look) return;
  if (look_) look_->disconnect(this);
  look_ = look;
  if (look_) {
    connect(look_, &LookStore::systemIsDarkChanged, this,
            &AppearanceSettingsModel::systemLookTextChanged);
    connect(look_, &LookStore::themeModeChanged, this,
            &AppearanceSettingsModel::themeModeTextChanged);
  }
  emit lookChanged();
  emit systemLookTextChanged();
  emit themeModeTextChanged();
}

QString AppearanceSettingsModel::systemLookText() const {
  if (!look_) return {};
  return look_->systemIsDark() ? QStringLiteral("macOS System is currently Dark")
                               : QStringLiteral("macOS System is currently Light");
}

QString AppearanceSettingsModel::themeModeText() const {
  if (!look_) return {};
  switch (look_->themeMode()) {
    case AppThemeMode::system: return QStringLiteral("Matches macOS automatically");
    case AppThemeMode::dark: return QStringLiteral("Always stay in Dark Mode");
    case AppThemeMode::light: return QStringLiteral("Always stay in Light Mode");
  }
  return {};
}

}  // namespace korvantis
