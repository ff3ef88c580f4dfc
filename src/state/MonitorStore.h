#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/QuitSafetyResult.h"
#include "core/Reading.h"
#include "state/AppAlertsStore.h"
#include "state/AudioMixerStore.h"
#include "state/HistoryMetricKind.h"
#include "state/HistoryRangeOption.h"
#include "state/LookStore.h"
#include "state/MenuBarSettingsStore.h"
#include "state/MonitorStoreCalls.h"
#include "state/OstrelPane.h"
#include "state/ProcessSortField.h"
#include "state/ProcessesSubTab.h"
#include "state/RemoteAlertStore.h"

namespace korvantis {

/// The program's main loop and the one model of every screen. Making it runs the first tick, so
/// the first drawing has real figures. Setters store even an equal value; only a real change
/// notifies. The notifications of one tick come together when all of its fields are in place, so
/// nobody sees half a tick. In QML an enumeration is the name of its case
/// (`store.selectedPane = "history"`); a name that is none changes nothing. Main thread.
class MonitorStore : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The application makes the one instance")
  Q_PROPERTY(korvantis::HardwareInfo hardwareInfo READ hardwareInfo CONSTANT FINAL)
  Q_PROPERTY(korvantis::EngineSnapshot snapshot READ snapshot NOTIFY snapshotChanged FINAL)
  Q_PROPERTY(QString selectedPane READ selectedPaneName WRITE setSelectedPaneName NOTIFY
                 selectedPaneChanged FINAL)
  Q_PROPERTY(QString selectedProcessSubTab READ selectedProcessSubTabName WRITE
                 setSelectedProcessSubTabName NOTIFY selectedProcessSubTabChanged FINAL)
  Q_PROPERTY(QString processSortField READ processSortFieldName WRITE setProcessSortFieldName NOTIFY
                 processSortFieldChanged FINAL)
  Q_PROPERTY(QString processSearchText READ processSearchText WRITE setProcessSearchText NOTIFY
                 processSearchTextChanged FINAL)
  Q_PROPERTY(bool showSystemProcesses READ showSystemProcesses WRITE setShowSystemProcesses NOTIFY
                 showSystemProcessesChanged FINAL)
  Q_PROPERTY(std::set<std::string> expandedAppGroupIDs READ expandedAppGroupIDs WRITE
                 setExpandedAppGroupIDs NOTIFY expandedAppGroupIDsChanged FINAL)
  Q_PROPERTY(bool showSettingsModal READ showSettingsModal WRITE setShowSettingsModal NOTIFY
                 showSettingsModalChanged FINAL)
  Q_PROPERTY(QString selectedSettingsTab READ selectedSettingsTab WRITE setSelectedSettingsTab
                 NOTIFY selectedSettingsTabChanged FINAL)
  Q_PROPERTY(QList<double> cpuHistory READ cpuHistory NOTIFY cpuHistoryChanged FINAL)
  Q_PROPERTY(QList<double> memoryHistory READ memoryHistory NOTIFY memoryHistoryChanged FINAL)
  Q_PROPERTY(QList<double> gpuHistory READ gpuHistory NOTIFY gpuHistoryChanged FINAL)
  Q_PROPERTY(QList<double> aneHistory READ aneHistory NOTIFY aneHistoryChanged FINAL)
  Q_PROPERTY(QList<double> netInHistory READ netInHistory NOTIFY netInHistoryChanged FINAL)
  Q_PROPERTY(QList<double> netOutHistory READ netOutHistory NOTIFY netOutHistoryChanged FINAL)
  Q_PROPERTY(QList<double> diskReadHistory READ diskReadHistory NOTIFY diskReadHistoryChanged FINAL)
  Q_PROPERTY(
      QList<double> diskWriteHistory READ diskWriteHistory NOTIFY diskWriteHistoryChanged FINAL)
  Q_PROPERTY(QList<double> tempHistory READ tempHistory NOTIFY tempHistoryChanged FINAL)
  Q_PROPERTY(QList<double> powerHistory READ powerHistory NOTIFY powerHistoryChanged FINAL)
  Q_PROPERTY(std::vector<korvantis::Insight> insights READ insights NOTIFY insightsChanged FINAL)
  Q_PROPERTY(std::set<korvantis::Uuid> pinnedInsightIDs READ pinnedInsightIDs NOTIFY
                 pinnedInsightIDsChanged FINAL)
  Q_PROPERTY(QString selectedHistoryRange READ selectedHistoryRangeName WRITE
                 setSelectedHistoryRangeName NOTIFY selectedHistoryRangeChanged FINAL)
  Q_PROPERTY(QString selectedHistoryMetric READ selectedHistoryMetricName WRITE
                 setSelectedHistoryMetricName NOTIFY selectedHistoryMetricChanged FINAL)
  Q_PROPERTY(std::vector<korvantis::Reading> readings READ readings NOTIFY readingsChanged FINAL)
  Q_PROPERTY(std::vector<korvantis::HistoricalAppSummary> appSummaries READ appSummaries NOTIFY
                 appSummariesChanged FINAL)
  Q_PROPERTY(QString lastExportStatusMessage READ lastExportStatusText NOTIFY
                 lastExportStatusMessageChanged FINAL)
  Q_PROPERTY(double refreshIntervalSeconds READ refreshIntervalSeconds NOTIFY
                 refreshIntervalSecondsChanged FINAL)
  Q_PROPERTY(korvantis::MenuBarSettingsStore* menuBarSettings READ menuBarSettings CONSTANT FINAL)
  Q_PROPERTY(korvantis::LookStore* look READ look CONSTANT FINAL)
  Q_PROPERTY(korvantis::AppAlertsStore* alerts READ alerts CONSTANT FINAL)
  Q_PROPERTY(korvantis::AudioMixerStore* audioMixer READ audioMixer CONSTANT FINAL)
  Q_PROPERTY(korvantis::RemoteAlertStore* remoteAlerts READ remoteAlerts CONSTANT FINAL)

 public:
  /// Makes the stores that it owns, reads the hardware, starts the bridge, runs the first tick,
  /// loads history and starts the timer, in this order.
  explicit MonitorStore(MonitorStoreCalls calls, QObject* parent = nullptr);
  ~MonitorStore() override;

  /// This machine; read once.
  const HardwareInfo& hardwareInfo() const { return hardwareInfo_; }
  /// The last tick, always whole.
  const EngineSnapshot& snapshot() const { return snapshot_; }

  /// The pane of the window and the popover.
  OstrelPane selectedPane() const { return selectedPane_; }
  void setSelectedPane(OstrelPane pane);

  /// The list shown in the processes pane.
  ProcessesSubTab selectedProcessSubTab() const { return selectedProcessSubTab_; }
  void setSelectedProcessSubTab(ProcessesSubTab tab);

  /// What the list of applications is sorted by.
  ProcessSortField processSortField() const { return processSortField_; }
  void setProcessSortField(ProcessSortField field);

  /// The filter of the processes pane, as typed.
  const QString& processSearchText() const { return processSearchText_; }
  void setProcessSearchText(const QString& text);

  /// Whether system applications stay in the list.
  bool showSystemProcesses() const { return showSystemProcesses_; }
  void setShowSystemProcesses(bool shows);

  /// The ids of the application rows that the user has opened.
  const std::set<std::string>& expandedAppGroupIDs() const { return expandedAppGroupIDs_; }
  void setExpandedAppGroupIDs(std::set<std::string> ids);

  /// Whether the settings sheet is shown.
  bool showSettingsModal() const { return showSettingsModal_; }
  void setShowSettingsModal(bool shows);

  /// The title of the settings tab shown.
  const QString& selectedSettingsTab() const { return selectedSettingsTab_; }
  void setSelectedSettingsTab(const QString& title);

  /// Rings of recent figures, oldest first, at most 60: percents, bytes a second, degrees
  /// Celsius, watts. They start with 40 made-up values, so that sparklines show a plain line
  /// before the first minutes of data.
  const QList<double>& cpuHistory() const { return cpuHistory_; }
  const QList<double>& memoryHistory() const { return memoryHistory_; }
  const QList<double>& gpuHistory() const { return gpuHistory_; }
  const QList<double>& aneHistory() const { return aneHistory_; }
  const QList<double>& netInHistory() const { return netInHistory_; }
  const QList<double>& netOutHistory() const { return netOutHistory_; }
  const QList<double>& diskReadHistory() const { return diskReadHistory_; }
  const QList<double>& diskWriteHistory() const { return diskWriteHistory_; }
  const QList<double>& tempHistory() const { return tempHistory_; }
  const QList<double>& powerHistory() const { return powerHistory_; }

  /// The findings shown, at most 80, pinned ones first, then the newest.
  const std::vector<Insight>& insights() const { return insights_; }
  /// The ids that the user pinned; some may no longer be listed.
  const std::set<Uuid>& pinnedInsightIDs() const { return pinnedInsightIDs_; }

  /// The range of the history pane and of the export. A change loads nothing by itself.
  HistoryRangeOption selectedHistoryRange() const { return selectedHistoryRange_; }
  void setSelectedHistoryRange(HistoryRangeOption range);

  /// The figure that the history pane charts.
  HistoryMetricKind selectedHistoryMetric() const { return selectedHistoryMetric_; }
  void setSelectedHistoryMetric(HistoryMetricKind metric);

  /// The machine's history as it was last loaded.
  const std::vector<Reading>& readings() const { return readings_; }
  /// The ledger of applications as it was last loaded.
  const std::vector<HistoricalAppSummary>& appSummaries() const { return appSummaries_; }
  /// How the last export ended; absent before the first. QML gets an empty text for absent.
  const std::optional<QString>& lastExportStatusMessage() const { return lastExportStatusMessage_; }

  /// Seconds between ticks.
  double refreshIntervalSeconds() const { return refreshIntervalSeconds_; }

  /// The stores that this one owns; they live as long as it does.
  MenuBarSettingsStore* menuBarSettings() { return &menuBarSettings_; }
  LookStore* look() { return &look_; }
  AppAlertsStore* alerts() { return &alerts_; }
  AudioMixerStore* audioMixer() { return &audioMixer_; }
  RemoteAlertStore* remoteAlerts() { return &remoteAlerts_; }

  /// The one listener that is called at the end of each tick, after every notification.
  void setOnSnapshotUpdated(std::function<void(const EngineSnapshot&)> listener);

  /// One tick: samples, files the figures away, merges the findings and tells everybody. Blocks
  /// until the engine has sampled.
  Q_INVOKABLE void refreshTick();

  /// Loads `readings` and `appSummaries` for the selected range, counted back from now.
  Q_INVOKABLE void reloadHistory();

  /// Replaces the tick timer, so that the next tick comes one whole period from now.
  Q_INVOKABLE void startTimer();

  /// Stores the seconds between ticks, whatever they are, and starts the timer anew, also when
  /// they are the present ones.
  Q_INVOKABLE void setRefreshInterval(double seconds);

  /// Writes the history of the selected range to two files in Downloads, shows them in the file
  /// manager and words the outcome in `lastExportStatusMessage`.
  Q_INVOKABLE void exportHistoryCSVs();

  /// Pins or unpins a finding. Its place in the list changes with the next tick only.
  void togglePinInsight(const Insight& insight);

  /// Takes a finding off the list and unpins it. It may come back with a later tick.
  void dismissInsight(const Insight& insight);

  /// Takes every finding off the list that is not pinned.
  Q_INVOKABLE void clearUnpinnedInsights();

  /// Whether an application may be quit, and what that frees.
  QuitSafetyResult quitSafety(const AppGroup& group) const;

  /// Stops an application, by force or politely; whether that was accepted. A tick follows 0.35
  /// seconds later, when it can be gone. Here and below a process that is no longer the one that
  /// was shown under its number is left out.
  bool quitApp(const AppGroup& group, bool force);

  /// Stops one process likewise.
  Q_INVOKABLE bool stopProcess(std::int32_t pid, bool force);

  /// Stops every forgotten server of the last tick, never by force; how many were stopped.
  Q_INVOKABLE int stopAllIdleServers();

  /// Sets a fan to `rpm`, or back to automatic control when it is absent, and ticks at once.
  void setFanManual(std::int64_t fanID, std::optional<double> rpm);

  /// One sentence on what is wrong with the machine right now, or that nothing is.
  Q_INVOKABLE QString whatsWrongHeadline() const;

  QString selectedPaneName() const;
  void setSelectedPaneName(const QString& name);
  QString selectedProcessSubTabName() const;
  void setSelectedProcessSubTabName(const QString& name);
  QString processSortFieldName() const;
  void setProcessSortFieldName(const QString& name);
  QString selectedHistoryRangeName() const;
  void setSelectedHistoryRangeName(const QString& name);
  QString selectedHistoryMetricName() const;
  void setSelectedHistoryMetricName(const QString& name);
  QString lastExportStatusText() const;

 signals:
  void snapshotChanged();
  void selectedPaneChanged();
  void selectedProcessSubTabChanged();
  void processSortFieldChanged();
  void processSearchTextChanged();
  void showSystemProcessesChanged();
  void expandedAppGroupIDsChanged();
  void showSettingsModalChanged();
  void selectedSettingsTabChanged();
  void cpuHistoryChanged();
  void memoryHistoryChanged();
  void gpuHistoryChanged();
  void aneHistoryChanged();
  void netInHistoryChanged();
  void netOutHistoryChanged();
  void diskReadHistoryChanged();
  void diskWriteHistoryChanged();
  void tempHistoryChanged();
  void powerHistoryChanged();
  void insightsChanged();
  void pinnedInsightIDsChanged();
  void selectedHistoryRangeChanged();
  void selectedHistoryMetricChanged();
  void readingsChanged();
  void appSummariesChanged();
  void lastExportStatusMessageChanged();
  void refreshIntervalSecondsChanged();

 private:
  using Signal = void (MonitorStore::*)();

  template <typename Value>
  void assign(Value& field, std::type_identity_t<Value> value, Signal changed);
  void notify(Signal changed);
  void notifyTogether(const std::function<void()>& change);
  void appendRings();
  void mergeNewInsights();
  void refreshAfterStop();
  Instant selectedRangeStart() const;

  MonitorStoreCalls calls_;
  HardwareInfo hardwareInfo_;
  EngineSnapshot snapshot_;
  OstrelPane selectedPane_ = OstrelPane::overview;
  ProcessesSubTab selectedProcessSubTab_ = ProcessesSubTab::apps;
  ProcessSortField processSortField_ = ProcessSortField::memory;
  QString processSearchText_;
  bool showSystemProcesses_ = false;
  std::set<std::string> expandedAppGroupIDs_;
  bool showSettingsModal_ = false;
  QString selectedSettingsTab_ = QStringLiteral("Menu Bar");
  QList<double> cpuHistory_ = QList<double>(40, 8.0);
  QList<double> memoryHistory_ = QList<double>(40, 45.0);
  QList<double> gpuHistory_ = QList<double>(40, 5.0);
  QList<double> aneHistory_ = QList<double>(40, 0.0);
  QList<double> netInHistory_ = QList<double>(40, 1024.0);
  QList<double> netOutHistory_ = QList<double>(40, 512.0);
  QList<double> diskReadHistory_ = QList<double>(40, 0.0);
  QList<double> diskWriteHistory_ = QList<double>(40, 0.0);
  QList<double> tempHistory_ = QList<double>(40, 44.0);
  QList<double> powerHistory_ = QList<double>(40, 8.5);
  std::vector<Insight> insights_;
  std::set<Uuid> pinnedInsightIDs_;
  HistoryRangeOption selectedHistoryRange_ = HistoryRangeOption::hour24;
  HistoryMetricKind selectedHistoryMetric_ = HistoryMetricKind::cpu;
  std::vector<Reading> readings_;
  std::vector<HistoricalAppSummary> appSummaries_;
  std::optional<QString> lastExportStatusMessage_;
  double refreshIntervalSeconds_ = 2.0;
  std::optional<RepeatingTimer> timer_;
  MenuBarSettingsStore menuBarSettings_;
  LookStore look_;
  AppAlertsStore alerts_;
  AudioMixerStore audioMixer_;
  RemoteAlertStore remoteAlerts_;
  std::function<void(const EngineSnapshot&)> onSnapshotUpdated_;
  /// Notifications held back until the fields of a tick are all in place.
  std::vector<Signal> heldBack_;
  bool isHoldingBack_ = false;
};

}  // namespace korvantis
