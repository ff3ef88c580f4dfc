#pragma once

#include <cstdint>
#include <sqlite3.h>

namespace korvantis::test {

/// Stands between SQLite and the files of every connection that is opened while it lives, and
/// makes chosen calls fail. One at a time, one thread.
class FailingVFS {
 public:
  /// What fails: the one call with this number (from 1 on), or it and all after it.
  enum class Kind { once, fromThenOn };

  FailingVFS();
  ~FailingVFS();
  FailingVFS(const FailingVFS&) = delete;
  FailingVFS& operator=(const FailingVFS&) = delete;

  /// Counts calls from now on; the one with that number fails with `error` (`SQLITE_FULL`,
  /// `SQLITE_IOERR`).
  void arm(int number, Kind kind, int error);

  /// Neither counts nor fails; gives how many calls were counted since `arm`.
  int disarm();

  /// Counts a call; the error that it must fail with, or `SQLITE_OK`.
  int next();

 private:
  sqlite3_vfs vfs{};
  sqlite3_vfs* real = nullptr;
  bool isArmed = false;
  int counted = 0;
  int failing = 0;
  Kind failingKind = Kind::once;
  int failingError = SQLITE_OK;
};

}  // namespace korvantis::test
