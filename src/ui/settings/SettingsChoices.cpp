#include "ui/settings/SettingsChoices.h"

#include "core/EnumerationTable.h"
#include "state/ChartPalette.h"
#include "state/HistoryRetentionOption.h"
#include "state/MenuBarColorMode.h"
#include "state/MenuBarDisplayStyle.h"
#include "state/MenuBarReadout.h"
#include "state/ObservableField.h"
#include "state/RemoteBriefInterval.h"
#include "state/TemperatureUnit.h"
#include "state/UIDensity.h"
#include "state/WhatsAppDeliveryMode.h"
#include "ui/views/Choices.h"
#include "ui/views/ModelText.h"

namespace korvantis {

using Choices::casesOf;

QStringList SettingsChoices::tabs() {
  return {QStringLiteral("Menu Bar"), QStringLiteral("Appearance"), QStringLiteral("Remote Alerts"),
          QStringLiteral("Integrations & MCP")};
}

QList<Choice> SettingsChoices::readouts() {
  QList<Choice> choices;
  for (const MenuBarReadout readout : allCases<MenuBarReadout>()) {
    choices.append({caseText(readout), textOf(rawValue(readout)), textOf(shortLabel(readout)),
                    textOf(iconName(readout))});
  }
  return choices;
}

QList<Choice> SettingsChoices::displayStyles() {
  return casesOf<MenuBarDisplayStyle>();
}
QList<Choice> SettingsChoices::colorModes() {
  return casesOf<MenuBarColorMode>();
}
QList<Choice> SettingsChoices::palettes() {
  return casesOf<ChartPalette>();
}
QList<Choice> SettingsChoices::temperatureUnits() {
  return casesOf<TemperatureUnit>();
}

QList<Choice> SettingsChoices::retentions() {
  QList<Choice> choices;
  for (const HistoryRetentionOption retention : allCases<HistoryRetentionOption>())
    choices.append({caseText(retention), textOf(label(retention))});
  return choices;
}

QList<Choice> SettingsChoices::densities() {
  return casesOf<UIDensity>();
}
QList<Choice> SettingsChoices::themeModes() {
  return Choices::themeModes();
}
QList<Choice> SettingsChoices::intervals() {
  return Choices::intervals();
}
QList<Choice> SettingsChoices::deliveryModes() {
  return casesOf<WhatsAppDeliveryMode>();
}
QList<Choice> SettingsChoices::schedules() {
  return casesOf<RemoteBriefInterval>();
}

}  // namespace korvantis
