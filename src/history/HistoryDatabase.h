#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "core/AppGroup.h"
#include "core/HistoricalAppSummary.h"
#include "core/Instant.h"
#include "core/Reading.h"
#include "core/SystemSample.h"
#include "history/ExportedCSVFiles.h"
#include "history/SQLiteConnection.h"
#include "platform/Clock.h"
#include "platform/FileManagerCalls.h"
#include "platform/PlatformCalls.h"
#include "platform/ProcessInfoCalls.h"

namespace korvantis {

/// The program's long-term memory: one SQLite file with the machine's readings in buckets of five
/// minutes and each application's totals in buckets of an hour. It only ever grows: nothing is
/// deleted, rolled up or migrated.
///
/// Nothing here fails to the caller. Without a file that can be opened every operation does nothing
/// and gives its empty result; a statement that fails is passed over. Any thread.
class HistoryDatabase {
 public:
  /// Opens "history.sqlite" in the folder "Korvantis" of the user's application support, else in
  /// that of the temporary folder, and shapes it. One with fewer than 12 readings is filled with an
  /// invented week. Keeps copies of the operations that it needs.
  explicit HistoryDatabase(const PlatformCalls& platform);

  HistoryDatabase(const HistoryDatabase&) = delete;
  HistoryDatabase& operator=(const HistoryDatabase&) = delete;
  ~HistoryDatabase() = default;

  /// Path of the file that was opened, or that was tried last. Never changes.
  const std::string& databasePath() const { return databasePath_; }

  /// Folds a finished tick into its buckets, at most once in 10 seconds by the sample's own time;
  /// in between the tick is dropped. `elapsedSeconds` is the time since the tick before; the first
  /// flush of a run stands for that long, and each other for the time since the flush before.
  void recordSample(const SystemSample& system, const std::vector<AppGroup>& appGroups,
                    double elapsedSeconds);

  /// The machine's readings that begin at `since` or later, oldest first, as they are stored.
  std::vector<Reading> loadReadings(Instant since);

  /// The totals of each application over the hours that begin at `since` or later: at most 50, the
  /// thirstiest first.
  std::vector<HistoricalAppSummary> loadAppSummaries(Instant since);

  /// Writes the history from `since` on into two CSV files in the user's downloads, else in the
  /// temporary folder, in place of files that are there. Each is written whole or not at all.
  ExportedCSVFiles exportCSVToDownloads(Instant since);

 private:
  SQLiteConnection openIn(const std::string& folder);
  bool isEstablished() const;
  void seedInitialHistory() const;

  const Clock clock;
  const ProcessInfoCalls processInfo;
  const FileManagerCalls files;

  std::string databasePath_;
  /// Guards `db` and `lastFlushTimestamp`; held for the whole of an operation.
  std::mutex lock;
  /// None when no file could be opened.
  SQLiteConnection db;
  /// Seconds since 1970 of the last flush; 0 before the first of this run.
  double lastFlushTimestamp = 0;
};

}  // namespace korvantis
