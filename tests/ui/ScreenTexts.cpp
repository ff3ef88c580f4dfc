#include "ui/ScreenTexts.h"

#include <QAbstractItemModel>
#include <QMetaProperty>
#include <QSequentialIterable>
#include <algorithm>
#include <set>

#include "state/BriefText.h"
#include "ui/ScriptedStore.h"
#include "ui/StatusItemTitle.h"
#include "ui/panes/AgentsPaneModel.h"
#include "ui/panes/HistoryPaneModel.h"
#include "ui/panes/InsightsPaneModel.h"
#include "ui/panes/OverviewPaneModel.h"
#include "ui/panes/ProcessesPaneModel.h"
#include "ui/panes/SoundPaneModel.h"
#include "ui/settings/AppearanceSettingsModel.h"
#include "ui/settings/RemoteAlertsModel.h"
#include "ui/views/ModelText.h"
#include "ui/views/RootContentModel.h"

namespace korvantis {

namespace {

constexpr std::uint64_t gigabyte = std::uint64_t{1} << 30;

SystemSample busySystem() {
  SystemSample system;
  system.cpuPercent = 1234.56;
  system.cpuUserPercent = 61.25;
  system.cpuSystemPercent = 12.5;
  system.perCoreCPUPercent = {12.5, 99.5};
  system.loadAverage1m = 1012.345;
  system.memoryTotalBytes = 1536 * gigabyte;
  system.memoryUsedBytes = 1100 * gigabyte + gigabyte / 2;
  system.memoryAppBytes = 1234567890;
  system.memoryWiredBytes = 3 * gigabyte;
  system.memoryCompressedBytes = 2000 * gigabyte;
  system.swapUsedBytes = 1023 * (gigabyte / 1024);
  system.gpuPercent = 33.3;
  system.gpuMemoryBytes = 1500 * gigabyte;
  system.neuralEnginePercent = 12.5;
  system.neuralEngineWatts = 1234.5;
  system.neuralEngineHolder = "Infinite Imaging";
  system.diskReadBytesPerSec = 1234567;
  system.diskWriteBytesPerSec = 2.5e12;
  system.diskTotalBytes = 4000 * gigabyte;
  system.diskFreeBytes = 1234 * gigabyte;
  system.networkInBytesPerSec = 1048000;
  system.networkOutBytesPerSec = 1234567890;
  system.totalNetworkInBytes = 2560 * gigabyte;
  system.totalNetworkOutBytes = 1500;
  system.battery.emplace();
  system.battery->percentage = 55.5;
  system.battery->cycleCount = 1042;
  system.thermal.cpuCelsius = 81.25;
  system.thermal.systemPowerWatts = 1008.45;
  FanReading fan;
  fan.name = "Left Side";
  fan.currentRPM = 2345.6;
  system.thermal.fans = {fan};
  return system;
}

AppGroup busyGroup(const std::string& name, std::int32_t pid) {
  ProcessSample process = makeProcess(pid, name);
  process.cpuPercent = 1234.5;
  process.memoryBytes = 1234 * gigabyte;
  process.diskReadBytesPerSec = 1234567;
  process.diskWriteBytesPerSec = 7654321;
  process.listeningPorts = {8080, 50000};
  ProcessSample helper = makeProcess(pid + 1, name + " Helper");
  helper.cpuPercent = 0.25;
  return makeGroup(name, {process, helper});
}

EngineSnapshot busySnapshot() {
  EngineSnapshot snapshot;
  snapshot.system = busySystem();
  snapshot.appGroups = {busyGroup("Infinite Indexer", 123456), busyGroup("ISTANBUL ırmak", 2345)};
  snapshot.projects.resize(1200);
  snapshot.listeningPorts.resize(1100);
  snapshot.idleServers.resize(1);
  snapshot.idleServers[0].memoryBytes = 1234567890;
  snapshot.newInsights = makeInsights(3);
  snapshot.activeStrains = {StrainKind::cpu, StrainKind::memory};
  snapshot.agentSessions = {makeAgent(123456, 3)};
  snapshot.agentSessions[0].cpuPercent = 1234.56;
  snapshot.agentSessions[0].memoryBytes = 1234 * gigabyte;
  snapshot.planLimits = makePlanLimits();
  snapshot.sleepBlockers.resize(1);
  snapshot.sleepBlockers[0].pid = 123456;
  snapshot.sleepBlockers[0].processName = "Insomnia";
  snapshot.bluetoothDevices.resize(1);
  snapshot.bluetoothDevices[0].name = "Intelligent Mouse";
  snapshot.bluetoothDevices[0].batteryPercent = 1234;
  snapshot.volumes.resize(1);
  snapshot.volumes[0].name = "Big Disk";
  snapshot.volumes[0].totalBytes = 8000 * gigabyte;
  snapshot.volumes[0].freeBytes = gigabyte;
  return snapshot;
}

void append(QStringList& texts, const QString& name, const QVariant& value);

void appendRows(QStringList& texts, const QString& name, const QAbstractItemModel& model) {
  const QHash<int, QByteArray> roles = model.roleNames();
  QList<int> order = roles.keys();
  std::sort(order.begin(), order.end());
  for (int row = 0; row < model.rowCount(); ++row) {
    for (const int role : order) {
      append(texts, name + u'.' + QString::fromUtf8(roles[role]), model.index(row, 0).data(role));
    }
  }
}

void appendGadget(QStringList& texts, const QString& name, const QVariant& value) {
  const QMetaObject& type = *value.metaType().metaObject();
  for (int index = 0; index < type.propertyCount(); ++index) {
    const QMetaProperty property = type.property(index);
    append(texts, name + u'.' + QString::fromUtf8(property.name()),
           property.readOnGadget(value.constData()));
  }
}

void append(QStringList& texts, const QString& name, const QVariant& value) {
  // Nobody reads these, and some are made by chance.
  if (name.endsWith(QStringLiteral("ID"))) return;
  const QMetaType type = value.metaType();
  if (type.id() == QMetaType::QString) {
    texts.append(name + QStringLiteral(": ") + value.toString());
  } else if (type.flags().testFlag(QMetaType::PointerToQObject)) {
    const auto* const model = qobject_cast<QAbstractItemModel*>(value.value<QObject*>());
    if (model != nullptr) appendRows(texts, name, *model);
  } else if (type.flags().testFlag(QMetaType::IsGadget)) {
    appendGadget(texts, name, value);
  } else if (value.canConvert<QSequentialIterable>()) {
    for (const QVariant& element : value.value<QSequentialIterable>()) append(texts, name, element);
  }
}

void appendModel(QStringList& texts, const QObject& model) {
  const QMetaObject& type = *model.metaObject();
  const QString name = QString::fromUtf8(type.className()).section(QStringLiteral("::"), -1);
  for (int index = type.propertyOffset(); index < type.propertyCount(); ++index) {
    const QMetaProperty property = type.property(index);
    append(texts, name + u'.' + QString::fromUtf8(property.name()), property.read(&model));
  }
}

template <typename Model>
void appendModelOf(QStringList& texts, MonitorStore& store) {
  Model model;
  model.setStore(&store);
  appendModel(texts, model);
}

void appendProcesses(QStringList& texts, MonitorStore& store) {
  store.setShowSystemProcesses(true);
  for (const ProcessesSubTab tab : allCases<ProcessesSubTab>()) {
    store.setSelectedProcessSubTab(tab);
    appendModelOf<ProcessesPaneModel>(texts, store);
  }
}

/// All readouts in each unit of temperature.
void appendTitles(QStringList& texts, MonitorStore& store) {
  std::set<MenuBarReadout> readouts;
  for (const MenuBarReadout readout : allCases<MenuBarReadout>()) readouts.insert(readout);
  store.menuBarSettings()->setEnabledReadouts(readouts);
  for (const TemperatureUnit unit : {TemperatureUnit::celsius, TemperatureUnit::fahrenheit}) {
    store.look()->setTemperatureUnit(unit);
    texts.append(QStringLiteral("title: ") + textOf(statusItemTitle(store, store.snapshot())));
    texts.append(QStringLiteral("headline: ") + store.whatsWrongHeadline());
    texts.append(QStringLiteral("temperature: ") + store.look()->formatTemp(1234.56));
  }
}

}  // namespace

QStringList screenTexts() {
  ScriptedStore scripted;
  scripted.next = busySnapshot();
  scripted.plugInAudio();
  scripted.hardware.chipName = "Intel Inside";
  MonitorStore& store = scripted.store();
  store.setExpandedAppGroupIDs({"daemon:Infinite Indexer"});
  QStringList texts;
  appendModelOf<RootContentModel>(texts, store);
  appendModelOf<OverviewPaneModel>(texts, store);
  appendProcesses(texts, store);
  appendModelOf<InsightsPaneModel>(texts, store);
  appendModelOf<AgentsPaneModel>(texts, store);
  appendModelOf<SoundPaneModel>(texts, store);
  appendModelOf<HistoryPaneModel>(texts, store);
  appendModelOf<RemoteAlertsModel>(texts, store);
  AppearanceSettingsModel appearance;
  appearance.setLook(store.look());
  appendModel(texts, appearance);
  appendTitles(texts, store);
  texts.append(QStringLiteral("brief: ") +
               textOf(formatBrief(store.snapshot(), "Intel Inside", "Manual Test")));
  return texts;
}

}  // namespace korvantis
