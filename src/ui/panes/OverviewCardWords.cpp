#include "ui/panes/OverviewCardWords.h"

#include <algorithm>
#include <vector>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "ui/theme/OstrelTheme.h"
#include "ui/views/ModelText.h"

namespace korvantis::OverviewCardWords {

namespace {

constexpr double bytesPerGigabyte = 1024.0 * 1024.0 * 1024.0;
constexpr double leastCoreShare = 0.05;
constexpr double busyNeuralPercent = 1;
constexpr std::size_t shownApps = 5;

QString fixed(double value, int decimals) {
  return textOf(fixedDecimals(value, decimals));
}

QString bytesText(std::uint64_t bytes) {
  return textOf(OstrelFormat::bytes(bytes));
}

QString rateText(double bytesPerSecond) {
  return textOf(OstrelFormat::rate(bytesPerSecond));
}

double gigabytes(std::uint64_t bytes) {
  return static_cast<double>(bytes) / bytesPerGigabyte;
}

/// Cut toward zero; a figure that is none or beyond all sense stays showable.
QString wholeText(double value) {
  constexpr double beyond = 1e15;
  if (!(value > -beyond && value < beyond)) return QStringLiteral("0");
  return QString::number(static_cast<qint64>(value));
}

double shareOf(std::uint64_t part, std::uint64_t total) {
  const auto whole = static_cast<double>(std::max<std::uint64_t>(total, 1));
  return std::min(static_cast<double>(part) / whole, 1.0);
}

QColor colorOf(MemoryPressureLevel level) {
  switch (level) {
    case MemoryPressureLevel::normal: return OstrelTheme::safeGreen();
    case MemoryPressureLevel::warning: return OstrelTheme::amberWarning();
    case MemoryPressureLevel::critical: return OstrelTheme::strainRed();
  }
  return {};
}

QString usedPercent(const MountedVolume& volume) {
  const std::uint64_t used = volume.totalBytes - std::min(volume.freeBytes, volume.totalBytes);
  return wholeText(shareOf(used, volume.totalBytes) * 100) + QStringLiteral("% used");
}

QString powerState(const BatterySample& battery) {
  if (battery.isCharging) return QStringLiteral("Charging");
  return battery.isPluggedIn ? QStringLiteral("Plugged In") : QStringLiteral("On Battery");
}

std::vector<const AppGroup*> applications(const EngineSnapshot& snapshot) {
  std::vector<const AppGroup*> apps;
  for (const AppGroup& group : snapshot.appGroups) {
    if (group.kind == AppGroupKind::app) apps.push_back(&group);
  }
  return apps;
}

}  // namespace

CPUCard cpu(const EngineSnapshot& snapshot, const HardwareInfo& hardware) {
  const SystemSample& system = snapshot.system;
  CPUCard card;
  card.headline = fixed(system.cpuPercent, 1) + u'%';
  card.subheadline = QStringLiteral("Load ") + fixed(system.loadAverage1m, 2);
  for (const double percent : system.perCoreCPUPercent) {
    card.coreShares.append(std::clamp(percent / 100, leastCoreShare, 1.0));
  }
  card.performanceCores = static_cast<int>(hardware.performanceCores);
  card.loadText = QStringLiteral("User %1% · Sys %2%")
                      .arg(fixed(system.cpuUserPercent, 0), fixed(system.cpuSystemPercent, 0));
  card.coresText =
      QStringLiteral("%1P + %2E").arg(hardware.performanceCores).arg(hardware.efficiencyCores);
  const auto top = std::max_element(snapshot.appGroups.begin(), snapshot.appGroups.end(),
                                    [](const AppGroup& left, const AppGroup& right) {
                                      return left.cpuPercent < right.cpuPercent;
                                    });
  if (top != snapshot.appGroups.end()) {
    card.topName = textOf(top->name);
    card.topPercent = fixed(top->cpuPercent, 1) + u'%';
  }
  return card;
}

MemoryCard memory(const SystemSample& system) {
  MemoryCard card;
  card.headline = QStringLiteral("%1 / %2 GB")
                      .arg(fixed(gigabytes(system.memoryUsedBytes), 1),
                           fixed(gigabytes(system.memoryTotalBytes), 0));
  card.subheadline = textOf(label(system.memoryPressure));
  card.pressureColor = colorOf(system.memoryPressure);
  card.appShare = shareOf(system.memoryAppBytes, system.memoryTotalBytes);
  card.wiredShare = shareOf(system.memoryWiredBytes, system.memoryTotalBytes);
  card.compressedShare = shareOf(system.memoryCompressedBytes, system.memoryTotalBytes);
  card.appText = QStringLiteral("App ") + bytesText(system.memoryAppBytes);
  card.wiredText = QStringLiteral("Wired ") + bytesText(system.memoryWiredBytes);
  card.swapText = QStringLiteral("Swap ") + bytesText(system.swapUsedBytes);
  return card;
}

GPUCard gpu(const SystemSample& system, const HardwareInfo& hardware) {
  GPUCard card;
  card.headline = QStringLiteral("GPU %1% · ANE %2%")
                      .arg(fixed(system.gpuPercent, 0), fixed(system.neuralEnginePercent, 0));
  card.subheadline = QString::number(hardware.gpuCores) + QStringLiteral("c GPU");
  card.memoryText = bytesText(system.gpuMemoryBytes);
  card.neuralText = QStringLiteral("Neural Engine (%1c)").arg(hardware.neuralEngineCores);
  card.isNeuralBusy = system.neuralEnginePercent > busyNeuralPercent;
  card.neuralWatts = fixed(system.neuralEngineWatts, 1) + QStringLiteral(" W");
  card.hasHolder = system.neuralEngineHolder.has_value();
  card.holderText = system.neuralEngineHolder
                        ? QStringLiteral("Active: ") + textOf(*system.neuralEngineHolder)
                        : QStringLiteral("ANE Idle — Ready for CoreML / Local LLM");
  return card;
}

ThermalCard thermal(const ThermalSample& thermal, const LookStore& look) {
  const FanReading* const fan = thermal.fans.empty() ? nullptr : &thermal.fans.front();
  ThermalCard card;
  card.headline = look.formatTemp(thermal.cpuCelsius);
  const QString fanSpeed =
      fan ? fixed(fan->currentRPM, 0) + QStringLiteral(" RPM") : QStringLiteral("Passive");
  card.subheadline =
      QStringLiteral("%1 · %2 W · %3")
          .arg(look.formatTemp(thermal.gpuCelsius), fixed(thermal.systemPowerWatts, 1), fanSpeed);
  card.hottestName = QStringLiteral("Hottest: ") + textOf(thermal.hottestSensorName);
  card.hottestText = look.formatTemp(thermal.hottestCelsius);
  card.isHot = thermal.hottestCelsius >= look.hotThresholdCelsius();
  card.fanText = QStringLiteral("Fan: 0 RPM (Silent)");
  card.fanButton = QStringLiteral("Fan Control");
  if (fan == nullptr) return card;
  card.fanText = textOf(fan->name) + QStringLiteral(": ") + wholeText(fan->currentRPM) +
                 QStringLiteral(" RPM");
  if (fan->isManual) card.fanButton = QStringLiteral("Manual RPM");
  card.minRPM = fan->minRPM;
  card.maxRPM = fan->maxRPM;
  card.fanID = fan->id;
  return card;
}

NetworkCard network(const EngineSnapshot& snapshot) {
  const SystemSample& system = snapshot.system;
  NetworkCard card;
  card.headline =
      QStringLiteral("↓ %1  ↑ %2")
          .arg(rateText(system.networkInBytesPerSec), rateText(system.networkOutBytesPerSec));
  card.sessionIn = QStringLiteral("Session In: ") + bytesText(system.totalNetworkInBytes);
  card.sessionOut = QStringLiteral("Session Out: ") + bytesText(system.totalNetworkOutBytes);
  card.portsText = QString::number(snapshot.listeningPorts.size()) + QStringLiteral(" ports");
  return card;
}

DiskCard disk(const EngineSnapshot& snapshot) {
  const SystemSample& system = snapshot.system;
  DiskCard card;
  card.headline = fixed(gigabytes(system.diskFreeBytes), 0) + QStringLiteral(" GB Free");
  card.subheadline = QStringLiteral("of %1 GB").arg(fixed(gigabytes(system.diskTotalBytes), 0));
  card.readText = QStringLiteral("Read ") + rateText(system.diskReadBytesPerSec);
  card.writeText = QStringLiteral("Write ") + rateText(system.diskWriteBytesPerSec);
  for (const MountedVolume& volume : snapshot.volumes) {
    card.volumes.append({.icon = volume.isInternal ? QStringLiteral("internaldrive")
                                                   : QStringLiteral("externaldrive.fill"),
                         .name = textOf(volume.name),
                         .figure = usedPercent(volume)});
  }
  return card;
}

BatteryCard battery(const EngineSnapshot& snapshot, const LookStore& look) {
  const BatterySample battery = snapshot.system.battery.value_or(BatterySample{});
  BatteryCard card;
  card.icon =
      battery.isCharging ? QStringLiteral("battery.100.bolt") : QStringLiteral("battery.100");
  card.headline = fixed(battery.percentage, 0) + QStringLiteral("% · ") + powerState(battery);
  card.subheadline = QStringLiteral("Health ") + wholeText(battery.healthPercent) + u'%';
  card.cyclesText = QStringLiteral("Cycles: %1").arg(battery.cycleCount);
  card.temperatureText =
      QStringLiteral("Batt Temp: ") + look.formatTemp(battery.temperatureCelsius);
  if (!snapshot.sleepBlockers.empty()) {
    card.awakeText = QStringLiteral("KEEPING MAC AWAKE (%1)").arg(snapshot.sleepBlockers.size());
  }
  for (const SleepBlocker& blocker : snapshot.sleepBlockers) {
    card.blockers.append(
        {.name = textOf(blocker.processName), .figure = QStringLiteral("PID %1").arg(blocker.pid)});
  }
  for (const BluetoothPeripheral& device : snapshot.bluetoothDevices) {
    card.devices.append(
        {.name = textOf(device.name), .figure = QString::number(device.batteryPercent) + u'%'});
  }
  return card;
}

TopAppsCard topApps(const EngineSnapshot& snapshot) {
  return {
      .headline = QString::number(applications(snapshot).size()) + QStringLiteral(" Apps Active"),
      .subheadline = QString::number(snapshot.projects.size()) + QStringLiteral(" Projects")};
}

std::vector<CardRow> largestApps(const EngineSnapshot& snapshot) {
  std::vector<const AppGroup*> apps = applications(snapshot);
  std::stable_sort(apps.begin(), apps.end(), [](const AppGroup* left, const AppGroup* right) {
    return left->memoryBytes > right->memoryBytes;
  });
  apps.resize(std::min(apps.size(), shownApps));
  std::vector<CardRow> rows;
  rows.reserve(apps.size());
  for (const AppGroup* const app : apps) {
    rows.push_back({.icon = textOf(app->bundlePath.value_or("")),
                    .name = textOf(app->name),
                    .figure = bytesText(app->memoryBytes),
                    .id = textOf(app->id)});
  }
  return rows;
}

QList<double> diskHistory(const QList<double>& read, const QList<double>& written) {
  QList<double> sums;
  const qsizetype count = std::min(read.size(), written.size());
  sums.reserve(count);
  for (qsizetype index = 0; index < count; ++index) sums.append(read[index] + written[index]);
  return sums;
}

}  // namespace korvantis::OverviewCardWords
