#pragma once

#include <optional>
#include <vector>

#include "core/AppGroup.h"
#include "core/HistoricalAppSummary.h"
#include "core/Instant.h"
#include "core/Reading.h"
#include "core/SystemSample.h"
#include "history/ExportedCSVFiles.h"

namespace korvantis {

/// The program's long-term memory: the machine's readings and each application's totals. For now
/// it keeps nothing and opens no file. Any thread.
class HistoryDatabase {
 public:
  /// Takes a finished tick; `elapsedSeconds` is the time since the tick before, at least 0.5. For
  /// now it is dropped.
  void recordSample(const SystemSample& system, const std::vector<AppGroup>& appGroups,
                    double elapsedSeconds);

  /// The machine's readings from `since` on, oldest first. For now empty.
  std::vector<Reading> loadReadings(Instant since);

  /// The totals of each application from `since` on, the thirstiest first. For now empty.
  std::vector<HistoricalAppSummary> loadAppSummaries(Instant since);

  /// Writes the history from `since` on into two CSV files in the user's downloads; absent when
  /// nothing was written, as is always the case for now.
  std::optional<ExportedCSVFiles> exportCSVToDownloads(Instant since);
};

}  // namespace korvantis
