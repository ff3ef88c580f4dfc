#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "platform/AppearanceCalls.h"
#include "platform/MainRunLoopCalls.h"
#include "platform/UserDefaultsCalls.h"
#include "state/AppThemeMode.h"
#include "state/ApplicationAppearanceCalls.h"
#include "state/ChartPalette.h"
#include "state/HistoryRetentionOption.h"
#include "state/TemperatureUnit.h"
#include "state/UIDensity.h"

namespace korvantis {

/// What `LookStore` needs.
struct LookStoreCalls {
  UserDefaultsCalls userDefaults;
  AppearanceCalls appearance;
  ApplicationAppearanceCalls application;
  MainRunLoopCalls mainRunLoop;
};

/// Theme, units and the heat limit. Only `themeMode` outlives the program, under
/// "Korvantis.themeMode". Setters store even an equal value; only a real change notifies. In QML
/// an enumeration is the name of its case ("fahrenheit"); a name that is none changes nothing.
/// Main thread.
class LookStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")
  Q_PROPERTY(
      QString themeMode READ themeModeName WRITE setThemeModeName NOTIFY themeModeChanged FINAL)
  Q_PROPERTY(bool systemIsDark READ systemIsDark NOTIFY systemIsDarkChanged FINAL)
  Q_PROPERTY(bool effectiveIsDark READ effectiveIsDark NOTIFY effectiveIsDarkChanged FINAL)
  Q_PROPERTY(QString palette READ paletteName WRITE setPaletteName NOTIFY paletteChanged FINAL)
  Q_PROPERTY(QString density READ densityName WRITE setDensityName NOTIFY densityChanged FINAL)
  Q_PROPERTY(QString temperatureUnit READ temperatureUnitName WRITE setTemperatureUnitName NOTIFY
                 temperatureUnitChanged FINAL)
  Q_PROPERTY(
      bool windowFloats READ windowFloats WRITE setWindowFloats NOTIFY windowFloatsChanged FINAL)
  Q_PROPERTY(
      QString retention READ retentionName WRITE setRetentionName NOTIFY retentionChanged FINAL)
  Q_PROPERTY(double hotThresholdCelsius READ hotThresholdCelsius WRITE setHotThresholdCelsius NOTIFY
                 hotThresholdCelsiusChanged FINAL)

 public:
  /// Takes the stored theme, writes it back, reads the system's look, pushes the result onto the
  /// windows and then follows the system.
  explicit LookStore(LookStoreCalls calls, QObject* parent = nullptr);

  /// The look that the user chose.
  AppThemeMode themeMode() const { return themeMode_; }
  /// Chooses a look, stores it at once, also when it is the present one, and pushes it.
  void setThemeMode(AppThemeMode mode);

  /// The system was set to a dark look when it was last asked.
  bool systemIsDark() const { return systemIsDark_; }
  /// The screens are dark. A view reads it to be told of a change of theme.
  bool effectiveIsDark() const { return effectiveIsDark_; }

  /// Offered in the settings; nothing else reads it.
  ChartPalette palette() const { return palette_; }
  void setPalette(ChartPalette palette);

  /// Offered in the settings; nothing else reads it.
  UIDensity density() const { return density_; }
  void setDensity(UIDensity density);

  /// The unit of every temperature on screen.
  TemperatureUnit temperatureUnit() const { return temperatureUnit_; }
  void setTemperatureUnit(TemperatureUnit unit);

  /// Offered in the settings; nothing else reads it.
  bool windowFloats() const { return windowFloats_; }
  void setWindowFloats(bool floats);

  /// Offered in the settings; nothing else reads it.
  HistoryRetentionOption retention() const { return retention_; }
  void setRetention(HistoryRetentionOption retention);

  /// From how many degrees Celsius on the machine counts as hot.
  double hotThresholdCelsius() const { return hotThresholdCelsius_; }
  void setHotThresholdCelsius(double celsius);

  /// Asks the system for its look, works out whether the screens are dark, and pushes that onto
  /// the theme and every titled window; also for a window that has just opened.
  Q_INVOKABLE void syncAppearance();

  /// From `system` to `dark` to `light` and back to `system`.
  Q_INVOKABLE void cycleThemeMode();

  /// A temperature in whole degrees of the chosen unit, such as "45°C" or "113°F".
  Q_INVOKABLE QString formatTemp(double celsius) const;

  /// Whether the system is set to a dark look, asked now.
  Q_INVOKABLE bool detectSystemDarkMode() const;

  QString themeModeName() const;
  void setThemeModeName(const QString& name);
  QString paletteName() const;
  void setPaletteName(const QString& name);
  QString densityName() const;
  void setDensityName(const QString& name);
  QString temperatureUnitName() const;
  void setTemperatureUnitName(const QString& name);
  QString retentionName() const;
  void setRetentionName(const QString& name);

 signals:
  void themeModeChanged();
  void systemIsDarkChanged();
  void effectiveIsDarkChanged();
  void paletteChanged();
  void densityChanged();
  void temperatureUnitChanged();
  void windowFloatsChanged();
  void retentionChanged();
  void hotThresholdCelsiusChanged();

 private:
  AppThemeMode storedThemeMode() const;
  void refreshSystemIsDark();
  void pushOntoWindows() const;
  void followSystemTheme();

  LookStoreCalls calls_;
  AppThemeMode themeMode_ = AppThemeMode::system;
  bool systemIsDark_ = true;
  bool effectiveIsDark_ = true;
  ChartPalette palette_ = ChartPalette::ocean;
  UIDensity density_ = UIDensity::comfortable;
  TemperatureUnit temperatureUnit_ = TemperatureUnit::celsius;
  bool windowFloats_ = false;
  HistoryRetentionOption retention_ = HistoryRetentionOption::days90;
  double hotThresholdCelsius_ = 82.0;
};

}  // namespace korvantis
