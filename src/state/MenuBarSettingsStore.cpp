#include "state/MenuBarSettingsStore.h"

#include <optional>
#include <string>
#include <utility>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "state/ObservableField.h"
#include "state/TemperatureUnit.h"

namespace korvantis {

namespace {

std::string wholePercent(double percent) {
  return fixedDecimals(percent, 0) + "%";
}

double memoryUsedPercent(const SystemSample& system) {
  if (system.memoryTotalBytes == 0) return 0;
  return static_cast<double>(system.memoryUsedBytes) /
         static_cast<double>(system.memoryTotalBytes) * 100;
}

std::string fansPiece(const ThermalSample& thermal) {
  return fixedDecimals(thermal.fans.empty() ? 0 : thermal.fans.front().currentRPM, 0) + " RPM";
}

std::optional<std::string> batteryPiece(const SystemSample& system) {
  if (!system.battery) return std::nullopt;
  return wholePercent(system.battery->percentage);
}

/// What the status item says for one readout; absent for a battery that is not there.
std::optional<std::string> piece(MenuBarReadout readout, const EngineSnapshot& snapshot,
                                 TemperatureUnit unit) {
  const SystemSample& system = snapshot.system;
  switch (readout) {
    case MenuBarReadout::cpu: return "CPU " + wholePercent(system.cpuPercent);
    case MenuBarReadout::memory: return "MEM " + wholePercent(memoryUsedPercent(system));
    case MenuBarReadout::gpu: return "GPU " + wholePercent(system.gpuPercent);
    case MenuBarReadout::neuralEngine: return "ANE " + wholePercent(system.neuralEnginePercent);
    // Received only: what is sent would make the item too wide.
    case MenuBarReadout::network: return "↓" + OstrelFormat::rate(system.networkInBytesPerSec);
    case MenuBarReadout::disk:
      return "D " + OstrelFormat::rate(system.diskReadBytesPerSec + system.diskWriteBytesPerSec);
    case MenuBarReadout::temperature: return formatTemp(system.thermal.cpuCelsius, unit);
    case MenuBarReadout::fans: return fansPiece(system.thermal);
    case MenuBarReadout::battery: return batteryPiece(system);
    case MenuBarReadout::power: return fixedDecimals(system.thermal.systemPowerWatts, 1) + "W";
    case MenuBarReadout::agents: return "AI " + std::to_string(snapshot.agentSessions.size());
  }
  return std::nullopt;
}

}  // namespace

MenuBarSettingsStore::MenuBarSettingsStore(QObject* parent) : QObject(parent) {}

void MenuBarSettingsStore::setEnabledReadouts(std::set<MenuBarReadout> readouts) {
  if (storeField(enabledReadouts_, std::move(readouts))) emit enabledReadoutsChanged();
}

void MenuBarSettingsStore::setDisplayStyle(MenuBarDisplayStyle style) {
  if (storeField(displayStyle_, style)) emit displayStyleChanged();
}

void MenuBarSettingsStore::setColorMode(MenuBarColorMode mode) {
  if (storeField(colorMode_, mode)) emit colorModeChanged();
}

void MenuBarSettingsStore::setShowStrainDot(bool shows) {
  if (storeField(showStrainDot_, shows)) emit showStrainDotChanged();
}

bool MenuBarSettingsStore::isEnabled(MenuBarReadout readout) const {
  return enabledReadouts_.contains(readout);
}

void MenuBarSettingsStore::toggle(MenuBarReadout readout) {
  auto readouts = enabledReadouts_;
  if (!isEnabled(readout)) {
    readouts.insert(readout);
  } else if (readouts.size() >= 2) {
    readouts.erase(readout);
  }
  setEnabledReadouts(std::move(readouts));
}

QString MenuBarSettingsStore::formattedSummary(const EngineSnapshot& snapshot,
                                               bool useFahrenheit) const {
  const auto unit = useFahrenheit ? TemperatureUnit::fahrenheit : TemperatureUnit::celsius;
  std::string summary;
  for (const MenuBarReadout readout : allCases<MenuBarReadout>()) {
    if (!isEnabled(readout)) continue;
    const auto text = piece(readout, snapshot, unit);
    if (!text) continue;
    if (!summary.empty()) summary += "  ";
    summary += *text;
  }
  return summary.empty() ? QStringLiteral("Korvantis") : QString::fromStdString(summary);
}

QString MenuBarSettingsStore::displayStyleName() const {
  return caseText(displayStyle_);
}

void MenuBarSettingsStore::setDisplayStyleName(const QString& name) {
  if (const auto style = caseOfText<MenuBarDisplayStyle>(name)) setDisplayStyle(*style);
}

QString MenuBarSettingsStore::colorModeName() const {
  return caseText(colorMode_);
}

void MenuBarSettingsStore::setColorModeName(const QString& name) {
  if (const auto mode = caseOfText<MenuBarColorMode>(name)) setColorMode(*mode);
}

}  // namespace korvantis
