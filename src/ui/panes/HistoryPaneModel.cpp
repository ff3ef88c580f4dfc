#include "ui/panes/HistoryPaneModel.h"

#include <algorithm>

#include "core/EnumerationTable.h"
#include "state/ObservableField.h"
#include "ui/panes/HistoryFigures.h"
#include "ui/panes/HistoryWords.h"
#include "ui/theme/HistoryMetricColors.h"
#include "ui/views/Choices.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

double restingTopOf(HistoryMetricKind metric) {
  switch (metric) {
    case HistoryMetricKind::fans: return 2000;
    case HistoryMetricKind::power: return 20;
    default: return 100;
  }
}

}  // namespace

void HistoryPaneModel::setStore(MonitorStore* store) {
  using Self = HistoryPaneModel;
  if (store_ == store) return;
  if (store_) store_->disconnect(this);
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  loadedRange_ = store_->selectedHistoryRange();
  connect(store_, &MonitorStore::readingsChanged, this, &Self::takeReadings);
  connect(store_, &MonitorStore::appSummariesChanged, this, &Self::takeSummaries);
  connect(store_, &MonitorStore::selectedHistoryMetricChanged, this, &Self::takeMetric);
  connect(store_, &MonitorStore::selectedHistoryRangeChanged, this, &Self::takeRange);
  takeMetric();
  takeSummaries();
}

QList<HistoryMetricChoice> HistoryPaneModel::metrics() const {
  QList<HistoryMetricChoice> choices;
  for (const HistoryMetricKind metric : allCases<HistoryMetricKind>()) {
    choices.append({caseText(metric), textOf(rawValue(metric)), korvantis::color(metric)});
  }
  return choices;
}

QList<Choice> HistoryPaneModel::ranges() const {
  return Choices::casesOf<HistoryRangeOption>();
}

void HistoryPaneModel::takeReadings() {
  loadedRange_ = store_->selectedHistoryRange();
  updateSeries();
}

void HistoryPaneModel::takeSummaries() {
  const auto& summaries = store_->appSummaries();
  QList<HistoryLedgerRow> rows;
  for (std::size_t index = 0; index < std::min(mostLedgerRows, summaries.size()); ++index) {
    rows.append(HistoryWords::ledgerRow(summaries[index]));
  }
  updateField(this, ledger_, std::move(rows), &HistoryPaneModel::ledgerChanged);
}

void HistoryPaneModel::takeMetric() {
  using Self = HistoryPaneModel;
  const HistoryMetricKind metric = store_->selectedHistoryMetric();
  updateField(this, color_, korvantis::color(metric), &Self::colorChanged);
  updateField(this, unit_, textOf(korvantis::unit(metric)), &Self::unitChanged);
  updateField(this, restingTop_, restingTopOf(metric), &Self::restingTopChanged);
  updateTitles();
  updateSeries();
}

/// The window and the panel each have this pane, and one load does for both.
void HistoryPaneModel::takeRange() {
  updateTitles();
  const HistoryRangeOption range = store_->selectedHistoryRange();
  if (loadedRange_ == range) return;
  loadedRange_ = range;
  store_->reloadHistory();
}

void HistoryPaneModel::updateSeries() {
  using Self = HistoryPaneModel;
  HistorySeries series;
  series.points = HistoryFigures::points(store_->readings(), store_->selectedHistoryMetric(),
                                         store_->hardwareInfo().totalMemoryBytes);
  const double average = HistoryFigures::average(series.points);
  const double peak = HistoryFigures::peak(series.points);
  updateField(this, series_, std::move(series), &Self::seriesChanged);
  updateField(this, averageText_, HistoryWords::average(average, unit_), &Self::averageTextChanged);
  updateField(this, peakText_, HistoryWords::peak(peak, unit_), &Self::peakTextChanged);
}

void HistoryPaneModel::updateTitles() {
  using Self = HistoryPaneModel;
  const HistoryRangeOption range = store_->selectedHistoryRange();
  updateField(this, chartTitle_, HistoryWords::chartTitle(store_->selectedHistoryMetric(), range),
              &Self::chartTitleChanged);
  updateField(this, ledgerTitle_, HistoryWords::ledgerTitle(range), &Self::ledgerTitleChanged);
}

}  // namespace korvantis
