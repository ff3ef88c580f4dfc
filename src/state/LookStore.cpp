#include "state/LookStore.h"

#include <QPointer>
#include <string>
#include <utility>

#include "state/ObservableField.h"

namespace korvantis {

namespace {

constexpr const char* themeModeKey = "Korvantis.themeMode";
constexpr WindowAppearance darkAppearance{true, 0x13, 0x13, 0x15};
constexpr WindowAppearance lightAppearance{false, 0xF3, 0xF4, 0xF8};

bool isDark(AppThemeMode mode, bool systemIsDark) {
  return mode == AppThemeMode::system ? systemIsDark : mode == AppThemeMode::dark;
}

}  // namespace

LookStore::LookStore(LookStoreCalls calls, QObject* parent)
    : QObject(parent), calls_(std::move(calls)) {
  setThemeMode(storedThemeMode());
  refreshSystemIsDark();
  syncAppearance();
  followSystemTheme();
}

AppThemeMode LookStore::storedThemeMode() const {
  const auto stored = calls_.userDefaults.stringForKey(themeModeKey);
  if (!stored) return AppThemeMode::system;
  return fromRawValue<AppThemeMode>(*stored).value_or(AppThemeMode::system);
}

void LookStore::setThemeMode(AppThemeMode mode) {
  const bool isChange = storeField(themeMode_, mode);
  calls_.userDefaults.setString(themeModeKey, std::string(rawValue(mode)));
  syncAppearance();
  if (isChange) emit themeModeChanged();
}

void LookStore::setPalette(ChartPalette palette) {
  if (storeField(palette_, palette)) emit paletteChanged();
}

void LookStore::setDensity(UIDensity density) {
  if (storeField(density_, density)) emit densityChanged();
}

void LookStore::setTemperatureUnit(TemperatureUnit unit) {
  if (storeField(temperatureUnit_, unit)) emit temperatureUnitChanged();
}

void LookStore::setWindowFloats(bool floats) {
  if (storeField(windowFloats_, floats)) emit windowFloatsChanged();
}

void LookStore::setRetention(HistoryRetentionOption retention) {
  if (storeField(retention_, retention)) emit retentionChanged();
}

void LookStore::setHotThresholdCelsius(double celsius) {
  if (storeField(hotThresholdCelsius_, celsius)) emit hotThresholdCelsiusChanged();
}

void LookStore::syncAppearance() {
  refreshSystemIsDark();
  const bool dark = isDark(themeMode_, systemIsDark_);
  if (calls_.application.setThemeIsDark) calls_.application.setThemeIsDark(dark);
  if (storeField(effectiveIsDark_, dark)) emit effectiveIsDarkChanged();
  if (calls_.application.clearApplicationAppearance)
    calls_.application.clearApplicationAppearance();
  pushOntoWindows();
}

void LookStore::pushOntoWindows() const {
  if (!calls_.application.windows) return;
  for (const ApplicationWindow& window : calls_.application.windows()) {
    if (window.isTitled) window.setAppearance(effectiveIsDark_ ? darkAppearance : lightAppearance);
  }
}

void LookStore::cycleThemeMode() {
  switch (themeMode_) {
    case AppThemeMode::system: setThemeMode(AppThemeMode::dark); break;
    case AppThemeMode::dark: setThemeMode(AppThemeMode::light); break;
    case AppThemeMode::light: setThemeMode(AppThemeMode::system); break;
  }
}

QString LookStore::formatTemp(double celsius) const {
  return QString::fromStdString(korvantis::formatTemp(celsius, temperatureUnit_));
}

bool LookStore::detectSystemDarkMode() const {
  return calls_.appearance.detectSystemDarkMode();
}

void LookStore::refreshSystemIsDark() {
  if (storeField(systemIsDark_, detectSystemDarkMode())) emit systemIsDarkChanged();
}

void LookStore::followSystemTheme() {
  if (!calls_.application.observeSystemTheme) return;
  // Whoever announces the change outlives the store, and so does a task that is already on its
  // way to the main thread.
  const QPointer<LookStore> weakSelf(this);
  calls_.application.observeSystemTheme([weakSelf, async = calls_.mainRunLoop.async] {
    async([weakSelf] {
      if (!weakSelf) return;
      weakSelf->refreshSystemIsDark();
      weakSelf->syncAppearance();
    });
  });
}

QString LookStore::themeModeName() const {
  return caseText(themeMode_);
}

void LookStore::setThemeModeName(const QString& name) {
  if (const auto mode = caseOfText<AppThemeMode>(name)) setThemeMode(*mode);
}

QString LookStore::paletteName() const {
  return caseText(palette_);
}

void LookStore::setPaletteName(const QString& name) {
  if (const auto palette = caseOfText<ChartPalette>(name)) setPalette(*palette);
}

QString LookStore::densityName() const {
  return caseText(density_);
}

void LookStore::setDensityName(const QString& name) {
  if (const auto density = caseOfText<UIDensity>(name)) setDensity(*density);
}

QString LookStore::temperatureUnitName() const {
  return caseText(temperatureUnit_);
}

void LookStore::setTemperatureUnitName(const QString& name) {
  if (const auto unit = caseOfText<TemperatureUnit>(name)) setTemperatureUnit(*unit);
}

QString LookStore::retentionName() const {
  return caseText(retention_);
}

void LookStore::setRetentionName(const QString& name) {
  if (const auto retention = caseOfText<HistoryRetentionOption>(name)) setRetention(*retention);
}

}  // namespace korvantis
