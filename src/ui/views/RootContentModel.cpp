#include "ui/views/RootContentModel.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "state/ObservableField.h"
#include "ui/views/Choices.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

QString machineLineOf(const HardwareInfo& hardware) {
  QString cores = QString::number(hardware.logicalCores) + QStringLiteral(" cores");
  if (hardware.performanceCores > 0 && hardware.efficiencyCores > 0) {
    cores += QStringLiteral(" (%1P + %2E)")
                 .arg(QString::number(hardware.performanceCores),
                      QString::number(hardware.efficiencyCores));
  }
  return QStringList{textOf(hardware.chipName), cores,
                     textOf(OstrelFormat::bytes(hardware.totalMemoryBytes))}
      .join(QStringLiteral(" · "));
}

QString countsTextOf(const EngineSnapshot& snapshot) {
  return QString::number(snapshot.appGroups.size()) + QStringLiteral(" groups · ") +
         QString::number(snapshot.listeningPorts.size()) + QStringLiteral(" listening ports · ") +
         QString::number(snapshot.projects.size()) + QStringLiteral(" dev projects");
}

QString figuresTextOf(const SystemSample& system) {
  return textOf("CPU " + fixedDecimals(system.cpuPercent, 1) + "% · RAM " +
                OstrelFormat::bytes(system.memoryUsedBytes) + " · " +
                fixedDecimals(system.thermal.systemPowerWatts, 1) + "W");
}

}  // namespace

void RootContentModel::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) store_->disconnect(this);
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &RootContentModel::takeSnapshot);
  connect(store_, &MonitorStore::insightsChanged, this, &RootContentModel::takeInsights);
  connect(store_, &MonitorStore::refreshIntervalSecondsChanged, this,
          &RootContentModel::takeInterval);
  updateField(this, machineLine_, machineLineOf(store_->hardwareInfo()),
              &RootContentModel::machineLineChanged);
  takeSnapshot();
  takeInsights();
  takeInterval();
}

QList<PaneTab> RootContentModel::tabs() const {
  QList<PaneTab> tabs;
  for (const OstrelPane pane : allCases<OstrelPane>()) {
    tabs.append({caseText(pane), textOf(title(pane)), textOf(iconName(pane)),
                 QStringLiteral("Ctrl+") + QLatin1Char(shortcutKey(pane))});
  }
  return tabs;
}

QList<Choice> RootContentModel::themeModes() const {
  return Choices::themeModes();
}

QUrl RootContentModel::appIconSource() const {
  const QFileInfo icon(QCoreApplication::applicationDirPath() +
                       QStringLiteral("/../Resources/AppIcon.icns"));
  return icon.exists() ? QUrl::fromLocalFile(icon.absoluteFilePath()) : QUrl();
}

void RootContentModel::takeSnapshot() {
  const EngineSnapshot& snapshot = store_->snapshot();
  updateField(this, isUnderStrain_, !snapshot.activeStrains.empty(),
              &RootContentModel::isUnderStrainChanged);
  updateField(this, countsText_, countsTextOf(snapshot), &RootContentModel::countsTextChanged);
  updateField(this, figuresText_, figuresTextOf(snapshot.system),
              &RootContentModel::figuresTextChanged);
}

void RootContentModel::takeInsights() {
  const auto count = store_->insights().size();
  updateField(this, insightBadge_, count == 0 ? QString() : QString::number(count),
              &RootContentModel::insightBadgeChanged);
}

void RootContentModel::takeInterval() {
  updateField(this, tickText_,
              textOf("Live " + fixedDecimals(store_->refreshIntervalSeconds(), 0) + "s tick"),
              &RootContentModel::tickTextChanged);
}

}  // namespace korvantis
