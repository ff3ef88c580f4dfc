#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <set>

#include "core/EngineSnapshot.h"
#include "state/MenuBarColorMode.h"
#include "state/MenuBarDisplayStyle.h"
#include "state/MenuBarReadout.h"

namespace korvantis {

/// What the status item shows. Nothing here outlives the program. Setters store even an equal
/// value; only a real change notifies. In QML an enumeration is the name of its case
/// ("strainOnly"); a name that is none changes nothing. Main thread.
class MenuBarSettingsStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("MonitorStore owns the one instance")
  Q_PROPERTY(std::set<korvantis::MenuBarReadout> enabledReadouts READ enabledReadouts WRITE
                 setEnabledReadouts NOTIFY enabledReadoutsChanged FINAL)
  Q_PROPERTY(QString displayStyle READ displayStyleName WRITE setDisplayStyleName NOTIFY
                 displayStyleChanged FINAL)
  Q_PROPERTY(
      QString colorMode READ colorModeName WRITE setColorModeName NOTIFY colorModeChanged FINAL)
  Q_PROPERTY(bool showStrainDot READ showStrainDot WRITE setShowStrainDot NOTIFY
                 showStrainDotChanged FINAL)

 public:
  explicit MenuBarSettingsStore(QObject* parent = nullptr);

  /// The readouts that are on.
  const std::set<MenuBarReadout>& enabledReadouts() const { return enabledReadouts_; }
  void setEnabledReadouts(std::set<MenuBarReadout> readouts);

  MenuBarDisplayStyle displayStyle() const { return displayStyle_; }
  void setDisplayStyle(MenuBarDisplayStyle style);

  MenuBarColorMode colorMode() const { return colorMode_; }
  void setColorMode(MenuBarColorMode mode);

  bool showStrainDot() const { return showStrainDot_; }
  void setShowStrainDot(bool shows);

  /// Whether a readout is on.
  bool isEnabled(MenuBarReadout readout) const;

  /// Turns a readout on, or off unless it is the only one.
  void toggle(MenuBarReadout readout);

  /// The text of the status item: one piece for each readout that is on, in the order of the
  /// readouts; "Korvantis" when there is no piece.
  QString formattedSummary(const EngineSnapshot& snapshot, bool useFahrenheit) const;

  QString displayStyleName() const;
  void setDisplayStyleName(const QString& name);
  QString colorModeName() const;
  void setColorModeName(const QString& name);

 signals:
  void enabledReadoutsChanged();
  void displayStyleChanged();
  void colorModeChanged();
  void showStrainDotChanged();

 private:
  std::set<MenuBarReadout> enabledReadouts_{MenuBarReadout::cpu, MenuBarReadout::memory,
                                            MenuBarReadout::temperature, MenuBarReadout::power};
  MenuBarDisplayStyle displayStyle_ = MenuBarDisplayStyle::both;
  MenuBarColorMode colorMode_ = MenuBarColorMode::strainOnly;
  bool showStrainDot_ = true;
};

}  // namespace korvantis
