#include "ui/panes/HistoryWords.h"

#include <algorithm>
#include <cmath>

#include "core/FixedDecimals.h"
#include "core/OstrelFormat.h"
#include "ui/views/ModelText.h"

namespace korvantis::HistoryWords {

namespace {

QString figure(const char* name, double value, const QString& unit) {
  return QString::fromLatin1(name) + textOf(fixedDecimals(value, 1)) + u' ' + unit;
}

QString bytes(std::uint64_t count) {
  return textOf(OstrelFormat::bytes(count));
}

/// The sums come out of a file that anything may have written into, and not every number is a
/// duration.
QString duration(double seconds) {
  constexpr double longest = 9.2e18;
  return textOf(
      OstrelFormat::duration(std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, longest)));
}

QString inCapitals(std::string_view label) {
  return textOf(label).toUpper();
}

}  // namespace

QString average(double value, const QString& unit) {
  return figure("Average: ", value, unit);
}

QString peak(double value, const QString& unit) {
  return figure("Peak: ", value, unit);
}

QString chartTitle(HistoryMetricKind metric, HistoryRangeOption range) {
  return inCapitals(rawValue(metric)) + QStringLiteral(" HISTORY (") + inCapitals(rawValue(range)) +
         u')';
}

QString ledgerTitle(HistoryRangeOption range) {
  return QStringLiteral("HISTORICAL APP RESOURCE LEDGER (") + inCapitals(rawValue(range)) + u')';
}

HistoryLedgerRow ledgerRow(const HistoricalAppSummary& summary) {
  HistoryLedgerRow row;
  row.id = textOf(summary.appID);
  row.name = textOf(summary.name);
  row.bundlePath = textOf(summary.bundlePath.value_or(""));
  row.cpuTime = duration(summary.cpuLoadSeconds);
  row.averageMemory = bytes(summary.averageMemoryBytes());
  row.peakMemory = bytes(summary.peakMemoryBytes);
  row.energy = textOf(fixedDecimals(summary.energyWattHours(), 2)) + QStringLiteral(" Wh");
  row.network = bytes(summary.networkBytesIn + summary.networkBytesOut);
  row.disk = bytes(summary.diskBytesRead + summary.diskBytesWritten);
  row.description = QStringLiteral(
                        "%1: CPU time %2, average RAM %3, peak RAM %4, energy %5, network %6, "
                        "disk %7")
                        .arg(row.name, row.cpuTime, row.averageMemory, row.peakMemory, row.energy,
                             row.network, row.disk);
  return row;
}

}  // namespace korvantis::HistoryWords
