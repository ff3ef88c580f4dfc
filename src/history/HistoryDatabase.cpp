#include "history/HistoryDatabase.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "history/HistoryCSV.h"
#include "history/HistoryFlush.h"
#include "history/HistoryQueries.h"
#include "history/HistorySeed.h"
#include "history/HistoryStatements.h"
#include "history/SQLiteStatement.h"
#include "history/WholeNumbers.h"

namespace korvantis {
namespace {

constexpr double leastSecondsBetweenFlushes = 10;
constexpr double leastInterval = 1;
constexpr std::int64_t leastEstablishedReadings = 12;

/// Some systems give folders with a slash at their end.
std::string pathIn(const std::string& folder, const std::string& name) {
  return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

std::string firstOr(const std::vector<std::string>& folders,
                    const std::function<std::string()>& fallback) {
  return folders.empty() ? fallback() : folders.front();
}

}  // namespace

HistoryDatabase::HistoryDatabase(const PlatformCalls& platform)
    : clock(platform.clock), processInfo(platform.processInfo), files(platform.files) {
  SQLiteConnection opened =
      openIn(firstOr(files.applicationSupportDirectories(), files.temporaryDirectory));
  if (!opened) opened = openIn(files.temporaryDirectory());

  const std::scoped_lock guard(lock);
  db = std::move(opened);
  if (!db) return;
  db.execute("PRAGMA journal_mode = WAL;");
  db.execute("PRAGMA synchronous = NORMAL;");
  db.execute(HistoryStatements::schema());
  if (!isEstablished()) seedInitialHistory();
}

SQLiteConnection HistoryDatabase::openIn(const std::string& folder) {
  const std::string own = pathIn(folder, "Korvantis");
  files.createDirectory(own);
  databasePath_ = pathIn(own, "history.sqlite");
  return SQLiteConnection(databasePath_);
}

bool HistoryDatabase::isEstablished() const {
  SQLiteStatement count(db, "SELECT COUNT(*) FROM readings;");
  return count && count.step() && count.wholeNumber(0) >= leastEstablishedReadings;
}

void HistoryDatabase::seedInitialHistory() const {
  HistorySeed::write(db, cutTowardZero(clock.now()),
                     static_cast<double>(processInfo.physicalMemory()));
}

void HistoryDatabase::recordSample(const SystemSample& system,
                                   const std::vector<AppGroup>& appGroups, double elapsedSeconds) {
  const double ts = system.timestamp.secondsSince1970;
  const std::scoped_lock guard(lock);
  const double sinceFlush = ts - lastFlushTimestamp;
  if (sinceFlush < leastSecondsBetweenFlushes || !db) return;
  const double interval =
      std::max(lastFlushTimestamp > 0 ? sinceFlush : elapsedSeconds, leastInterval);
  lastFlushTimestamp = ts;
  HistoryFlush::write(db, system, appGroups, interval);
}

std::vector<Reading> HistoryDatabase::loadReadings(Instant since) {
  const std::int64_t nowSeconds = cutTowardZero(clock.now());
  const std::scoped_lock guard(lock);
  if (!db) return {};
  return HistoryQueries::readings(db, cutTowardZero(since.secondsSince1970), nowSeconds);
}

std::vector<HistoricalAppSummary> HistoryDatabase::loadAppSummaries(Instant since) {
  const std::scoped_lock guard(lock);
  if (!db) return {};
  return HistoryQueries::appSummaries(db, cutTowardZero(since.secondsSince1970));
}

ExportedCSVFiles HistoryDatabase::exportCSVToDownloads(Instant since) {
  const std::vector<Reading> readings = loadReadings(since);
  const std::vector<HistoricalAppSummary> summaries = loadAppSummaries(since);
  const std::string folder = firstOr(files.downloadsDirectories(), files.temporaryDirectory);
  const std::string readingsText = HistoryCSV::readingsText(readings);
  const std::string appsText = HistoryCSV::appsText(summaries);
  const auto written = [&](const std::string& name, const std::string& text) {
    const std::string path = pathIn(folder, name);
    return files.writeAtomically(path, text) ? std::optional(path) : std::nullopt;
  };
  return {.readingsURL = written("ostrel-system-readings.csv", readingsText),
          .appsURL = written("ostrel-app-usage.csv", appsText)};
}

}  // namespace korvantis
