// The plain fields of MonitorStore: navigation and selection, which screens read and write.
#include <utility>

#include "state/MonitorStore.h"
#include "state/ObservableField.h"

namespace korvantis {

void MonitorStore::setSelectedPane(OstrelPane pane) {
  if (storeField(selectedPane_, pane)) emit selectedPaneChanged();
}

void MonitorStore::setSelectedProcessSubTab(ProcessesSubTab tab) {
  if (storeField(selectedProcessSubTab_, tab)) emit selectedProcessSubTabChanged();
}

void MonitorStore::setProcessSortField(ProcessSortField field) {
  if (storeField(processSortField_, field)) emit processSortFieldChanged();
}

void MonitorStore::setProcessSearchText(const QString& text) {
  if (storeField(processSearchText_, text)) emit processSearchTextChanged();
}

void MonitorStore::setShowSystemProcesses(bool shows) {
  if (storeField(showSystemProcesses_, shows)) emit showSystemProcessesChanged();
}

void MonitorStore::setExpandedAppGroupIDs(std::set<std::string> ids) {
  if (storeField(expandedAppGroupIDs_, std::move(ids))) emit expandedAppGroupIDsChanged();
}

void MonitorStore::setShowSettingsModal(bool shows) {
  if (storeField(showSettingsModal_, shows)) emit showSettingsModalChanged();
}

void MonitorStore::setSelectedSettingsTab(const QString& title) {
  if (storeField(selectedSettingsTab_, title)) emit selectedSettingsTabChanged();
}

void MonitorStore::setSelectedHistoryRange(HistoryRangeOption range) {
  if (storeField(selectedHistoryRange_, range)) emit selectedHistoryRangeChanged();
}

void MonitorStore::setSelectedHistoryMetric(HistoryMetricKind metric) {
  if (storeField(selectedHistoryMetric_, metric)) emit selectedHistoryMetricChanged();
}

QString MonitorStore::selectedPaneName() const {
  return caseText(selectedPane_);
}

void MonitorStore::setSelectedPaneName(const QString& name) {
  if (const auto pane = caseOfText<OstrelPane>(name)) setSelectedPane(*pane);
}

QString MonitorStore::selectedProcessSubTabName() const {
  return caseText(selectedProcessSubTab_);
}

void MonitorStore::setSelectedProcessSubTabName(const QString& name) {
  if (const auto tab = caseOfText<ProcessesSubTab>(name)) setSelectedProcessSubTab(*tab);
}

QString MonitorStore::processSortFieldName() const {
  return caseText(processSortField_);
}

void MonitorStore::setProcessSortFieldName(const QString& name) {
  if (const auto field = caseOfText<ProcessSortField>(name)) setProcessSortField(*field);
}

QString MonitorStore::selectedHistoryRangeName() const {
  return caseText(selectedHistoryRange_);
}

void MonitorStore::setSelectedHistoryRangeName(const QString& name) {
  if (const auto range = caseOfText<HistoryRangeOption>(name)) setSelectedHistoryRange(*range);
}

QString MonitorStore::selectedHistoryMetricName() const {
  return caseText(selectedHistoryMetric_);
}

void MonitorStore::setSelectedHistoryMetricName(const QString& name) {
  if (const auto metric = caseOfText<HistoryMetricKind>(name)) setSelectedHistoryMetric(*metric);
}

QString MonitorStore::lastExportStatusText() const {
  return lastExportStatusMessage_.value_or(QString());
}

}  // namespace korvantis
