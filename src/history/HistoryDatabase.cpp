#include "history/HistoryDatabase.h"

namespace korvantis {

void HistoryDatabase::recordSample(const SystemSample& /*system*/,
                                   const std::vector<AppGroup>& /*appGroups*/,
                                   double /*elapsedSeconds*/) {}

std::vector<Reading> HistoryDatabase::loadReadings(Instant /*since*/) {
  return {};
}

std::vector<HistoricalAppSummary> HistoryDatabase::loadAppSummaries(Instant /*since*/) {
  return {};
}

std::optional<ExportedCSVFiles> HistoryDatabase::exportCSVToDownloads(Instant /*since*/) {
  return std::nullopt;
}

}  // namespace korvantis
