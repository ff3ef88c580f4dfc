#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "history/HistoryDatabase.h"
#include "platform/PlatformCalls.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

using Rows = std::vector<std::vector<std::string>>;

/// What a statement gives, as SQLite's own texts; a null is "NULL". Opened and read without any of
/// the program's code. A failure is one row with its message.
Rows rowsOf(const std::string& databasePath, const std::string& sql);

/// The single value that a statement gives.
std::string valueOf(const std::string& databasePath, const std::string& sql);

/// The single whole number that a statement gives.
std::int64_t numberOf(const std::string& databasePath, const std::string& sql);

/// A platform whose folders lie in `root` and whose time and memory are given.
PlatformCalls historyPlatform(const std::string& root, const double* now,
                              std::uint64_t physicalMemory = 16ULL << 30U);

/// A sample at that time with a different figure in each field that the history keeps.
SystemSample sampleAt(double timestamp);

/// A group with a different figure in each field that the history keeps.
AppGroup groupNamed(const std::string& name);

/// Databases in a folder of their own, under a clock that stands at a round hour.
class HistoryTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  double now = 1'699'999'200;
  PlatformCalls platform = historyPlatform(folder.path(), &now);

  /// Where the file lies.
  std::string path() const { return folder.path("support/Korvantis/history.sqlite"); }

  /// Opens the database; the one before is closed first.
  HistoryDatabase& open();
  void close() { database.reset(); }

  /// The database, opened at the first use.
  HistoryDatabase& history() { return database ? *database : open(); }

  Rows rows(const std::string& sql) const { return rowsOf(path(), sql); }
  std::string value(const std::string& sql) const { return valueOf(path(), sql); }
  std::int64_t number(const std::string& sql) const { return numberOf(path(), sql); }

  /// The bytes of a file below the test's folder; empty when there is none.
  std::string bytesOf(const std::string& relative) const;

 private:
  std::unique_ptr<HistoryDatabase> database;
};

}  // namespace korvantis::test
