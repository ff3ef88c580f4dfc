#pragma once

#include <QString>

#include "core/HistoricalAppSummary.h"
#include "state/HistoryMetricKind.h"
#include "state/HistoryRangeOption.h"
#include "ui/panes/HistoryLedgerRow.h"

/// The words of the history pane. Any thread.
namespace korvantis::HistoryWords {

/// Such as "Average: 12.3 %".
QString average(double value, const QString& unit);
/// Such as "Peak: 45.6 %".
QString peak(double value, const QString& unit);
/// Such as "NEURAL ENGINE HISTORY (24H)".
QString chartTitle(HistoryMetricKind metric, HistoryRangeOption range);
/// Such as "HISTORICAL APP RESOURCE LEDGER (24H)".
QString ledgerTitle(HistoryRangeOption range);
/// The ledger's line on one application.
HistoryLedgerRow ledgerRow(const HistoricalAppSummary& summary);

}  // namespace korvantis::HistoryWords
