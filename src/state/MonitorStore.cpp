#include "state/MonitorStore.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>
#include <utility>

#include "bridge/BridgeCommands.h"
#include "state/InsightList.h"
#include "state/ObservableField.h"
#include "state/StillShown.h"
#include "state/WhatsWrongHeadline.h"

namespace korvantis {

namespace {

constexpr qsizetype ringCapacity = 60;
/// Long enough for a stopped process to be gone from the next sample.
constexpr double secondsUntilStopShows = 0.35;

LookStoreCalls lookStoreCalls(const MonitorStoreCalls& calls) {
  return {calls.userDefaults, calls.appearance, calls.applicationAppearance, calls.mainRunLoop};
}

BriefDeliveryCalls briefDeliveryCalls(const MonitorStoreCalls& calls) {
  return {calls.clock, calls.mainRunLoop, calls.background,
          calls.tasks, calls.http,        calls.workspace};
}

/// `ring` with `value` at its end and no more than `maxCount` values, the oldest ones dropped.
QList<double> appendHistory(QList<double> ring, double value, qsizetype maxCount) {
  ring.append(value);
  if (ring.size() > maxCount) ring.remove(0, ring.size() - maxCount);
  return ring;
}

double memoryUsedPercent(const SystemSample& system) {
  if (system.memoryTotalBytes == 0) return 0;
  return static_cast<double>(system.memoryUsedBytes) /
         static_cast<double>(system.memoryTotalBytes) * 100;
}

QString fileNameOf(const std::string& path) {
  return QFileInfo(QString::fromStdString(path)).fileName();
}

}  // namespace

MonitorStore::MonitorStore(MonitorStoreCalls calls, QObject* parent)
    : QObject(parent),
      calls_(std::move(calls)),
      look_(lookStoreCalls(calls_)),
      alerts_(calls_.clock),
      audioMixer_(calls_.audio),
      remoteAlerts_(calls_.userDefaults, briefDeliveryCalls(calls_)) {
  hardwareInfo_ = calls_.engine.readHardwareInfo();
  calls_.engine.startBridgeListener(BridgeCommands(calls_.engine.sampleTick));
  refreshTick();
  reloadHistory();
  startTimer();
}

MonitorStore::~MonitorStore() {
  if (timer_) timer_->invalidate();
}

template <typename Value>
void MonitorStore::assign(Value& field, std::type_identity_t<Value> value, Signal changed) {
  if (storeField(field, std::move(value))) notify(changed);
}

void MonitorStore::notify(Signal changed) {
  if (isHoldingBack_) {
    heldBack_.push_back(changed);
  } else {
    emit(this->*changed)();
  }
}

void MonitorStore::notifyTogether(const std::function<void()>& change) {
  isHoldingBack_ = true;
  change();
  isHoldingBack_ = false;
  for (const Signal changed : std::exchange(heldBack_, {})) notify(changed);
}

void MonitorStore::startTimer() {
  if (timer_) timer_->invalidate();
  // The run loop may hold the timer, and a task of its last firing, longer than the store lives.
  const QPointer<MonitorStore> weakSelf(this);
  timer_ = calls_.mainRunLoop.scheduleRepeatingTimer(refreshIntervalSeconds_,
                                                     [weakSelf, async = calls_.mainRunLoop.async] {
                                                       async([weakSelf] {
                                                         if (weakSelf) weakSelf->refreshTick();
                                                       });
                                                     });
}

void MonitorStore::setRefreshInterval(double seconds) {
  assign(refreshIntervalSeconds_, seconds, &MonitorStore::refreshIntervalSecondsChanged);
  startTimer();
}

void MonitorStore::refreshTick() {
  notifyTogether([this] {
    assign(snapshot_,
           calls_.engine.sampleTick(alerts_.appLimits(), alerts_.mutedApps(),
                                    look_.hotThresholdCelsius()),
           &MonitorStore::snapshotChanged);
    appendRings();
    mergeNewInsights();
    audioMixer_.syncWithRunningApps(snapshot_.appGroups);
    remoteAlerts_.evaluateTick(snapshot_, hardwareInfo_.chipName);
  });
  // A copy, since the listener may replace itself.
  if (const auto listener = onSnapshotUpdated_) listener(snapshot_);
}

void MonitorStore::appendRings() {
  const SystemSample& system = snapshot_.system;
  const auto append = [this](QList<double>& ring, double value, Signal changed) {
    assign(ring, appendHistory(ring, value, ringCapacity), changed);
  };
  append(cpuHistory_, system.cpuPercent, &MonitorStore::cpuHistoryChanged);
  append(memoryHistory_, memoryUsedPercent(system), &MonitorStore::memoryHistoryChanged);
  append(gpuHistory_, system.gpuPercent, &MonitorStore::gpuHistoryChanged);
  append(aneHistory_, system.neuralEnginePercent, &MonitorStore::aneHistoryChanged);
  append(netInHistory_, system.networkInBytesPerSec, &MonitorStore::netInHistoryChanged);
  append(netOutHistory_, system.networkOutBytesPerSec, &MonitorStore::netOutHistoryChanged);
  append(diskReadHistory_, system.diskReadBytesPerSec, &MonitorStore::diskReadHistoryChanged);
  append(diskWriteHistory_, system.diskWriteBytesPerSec, &MonitorStore::diskWriteHistoryChanged);
  append(tempHistory_, system.thermal.cpuCelsius, &MonitorStore::tempHistoryChanged);
  append(powerHistory_, system.thermal.systemPowerWatts, &MonitorStore::powerHistoryChanged);
}

void MonitorStore::mergeNewInsights() {
  assign(insights_, InsightList::merged(insights_, snapshot_.newInsights, pinnedInsightIDs_),
         &MonitorStore::insightsChanged);
}

void MonitorStore::setOnSnapshotUpdated(std::function<void(const EngineSnapshot&)> listener) {
  onSnapshotUpdated_ = std::move(listener);
}

void MonitorStore::togglePinInsight(const Insight& insight) {
  auto pinned = pinnedInsightIDs_;
  const bool isPinnedNow = pinned.erase(insight.id) == 0;
  if (isPinnedNow) pinned.insert(insight.id);
  auto listed = insights_;
  const auto entry = std::find_if(listed.begin(), listed.end(),
                                  [&](const Insight& each) { return each.id == insight.id; });
  if (entry != listed.end()) entry->isPinned = isPinnedNow;
  notifyTogether([&] {
    assign(pinnedInsightIDs_, std::move(pinned), &MonitorStore::pinnedInsightIDsChanged);
    assign(insights_, std::move(listed), &MonitorStore::insightsChanged);
  });
}

void MonitorStore::dismissInsight(const Insight& insight) {
  const Uuid id = insight.id;
  auto pinned = pinnedInsightIDs_;
  pinned.erase(id);
  auto listed = insights_;
  std::erase_if(listed, [&](const Insight& each) { return each.id == id; });
  notifyTogether([&] {
    assign(pinnedInsightIDs_, std::move(pinned), &MonitorStore::pinnedInsightIDsChanged);
    assign(insights_, std::move(listed), &MonitorStore::insightsChanged);
  });
}

void MonitorStore::clearUnpinnedInsights() {
  auto listed = insights_;
  std::erase_if(listed, [this](const Insight& each) {
    return !InsightList::isPinned(each, pinnedInsightIDs_);
  });
  assign(insights_, std::move(listed), &MonitorStore::insightsChanged);
}

Instant MonitorStore::selectedRangeStart() const {
  return Instant{calls_.clock.now() - lookBackSeconds(selectedHistoryRange_)};
}

void MonitorStore::reloadHistory() {
  const Instant since = selectedRangeStart();
  assign(readings_, calls_.engine.loadReadings(since), &MonitorStore::readingsChanged);
  assign(appSummaries_, calls_.engine.loadAppSummaries(since), &MonitorStore::appSummariesChanged);
}

void MonitorStore::exportHistoryCSVs() {
  const auto files = calls_.engine.exportCSVToDownloads(selectedRangeStart());
  const bool isWhole = files && files->readingsURL && files->appsURL;
  const QString message = isWhole ? "Exported " + fileNameOf(*files->readingsURL) + " & " +
                                        fileNameOf(*files->appsURL) + " to Downloads"
                                  : QStringLiteral("Failed to export CSV files");
  assign(lastExportStatusMessage_, message, &MonitorStore::lastExportStatusMessageChanged);
  if (isWhole && calls_.activateFileViewerSelectingURLs)
    calls_.activateFileViewerSelectingURLs({*files->readingsURL, *files->appsURL});
}

QuitSafetyResult MonitorStore::quitSafety(const AppGroup& group) const {
  return calls_.engine.checkQuitSafety(group);
}

void MonitorStore::refreshAfterStop() {
  const QPointer<MonitorStore> weakSelf(this);
  calls_.mainRunLoop.asyncAfter(secondsUntilStopShows, [weakSelf] {
    if (weakSelf) weakSelf->refreshTick();
  });
}

bool MonitorStore::quitApp(const AppGroup& group, bool force) {
  const AppGroup shown = StillShown(calls_.processStart).of(group);
  // A group that was empty all along is the engine's to judge.
  const bool isGone = shown.processes.empty() && !group.processes.empty();
  const bool accepted = !isGone && calls_.engine.quitAppGroup(shown, force);
  refreshAfterStop();
  return accepted;
}

bool MonitorStore::stopProcess(std::int32_t pid, bool force) {
  const bool isShown = StillShown(calls_.processStart).isStillIn(snapshot_, pid);
  const bool accepted = isShown && calls_.engine.stopProcess(pid, force);
  refreshAfterStop();
  return accepted;
}

int MonitorStore::stopAllIdleServers() {
  const int stopped =
      calls_.engine.stopIdleServers(StillShown(calls_.processStart).of(snapshot_.idleServers));
  refreshAfterStop();
  return stopped;
}

void MonitorStore::setFanManual(std::int64_t fanID, std::optional<double> rpm) {
  calls_.engine.setFanTarget(fanID, rpm);
  refreshTick();
}

QString MonitorStore::whatsWrongHeadline() const {
  return QString::fromStdString(korvantis::whatsWrongHeadline(snapshot_, look_.temperatureUnit()));
}

}  // namespace korvantis
