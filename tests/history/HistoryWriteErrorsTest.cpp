#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

#include "history/FailingVFS.h"
#include "history/HistoryFixture.h"

namespace korvantis {
namespace {

using test::FailingVFS;
using test::groupNamed;
using test::HistoryTest;
using test::Rows;
using test::sampleAt;

constexpr double flushTime = 1'800'000'000;
constexpr const char* committedRows =
    "SELECT * FROM readings WHERE start < 1800000000 ORDER BY start";
constexpr const char* committedHours =
    "SELECT * FROM app_hours WHERE bucket_start < 1800000000 ORDER BY bucket_start, app_id";

struct Fault {
  FailingVFS::Kind kind;
  int error;
};

class HistoryWriteErrors : public HistoryTest {
 protected:
  FailingVFS files;

  void TearDown() override { close(); }

  /// A folder like the one that the test began with, and nothing else in it.
  void restore() {
    close();
    folder.remove("support");
    folder.remove("temporary");
    if (std::filesystem::exists(folder.path("begin"))) {
      std::filesystem::copy(folder.path("begin"), folder.path("support"),
                            std::filesystem::copy_options::recursive);
    }
  }

  /// A run of the program: a start, three flushes, a look at the history and an end.
  void run() {
    open();
    for (int flush = 0; flush < 3; ++flush) {
      history().recordSample(sampleAt(flushTime + 10 * flush),
                             {groupNamed("One"), groupNamed("Two")}, 10);
      history().loadReadings(Instant{0});
      history().loadAppSummaries(Instant{0});
    }
    close();
  }

  /// How often a run calls the file system.
  int callsOfARun() {
    restore();
    files.arm(0, FailingVFS::Kind::once, SQLITE_OK);
    run();
    return files.disarm();
  }

  void runWithFault(int number, const Fault& fault) {
    restore();
    files.arm(number, fault.kind, fault.error);
    run();
    files.disarm();
  }

  /// The file is whole, and the next run of the program works as if nothing had been.
  void expectWholeAndUsable() {
    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
    open().recordSample(sampleAt(flushTime + 3600), {groupNamed("After")}, 10);
    EXPECT_EQ(history().loadReadings(Instant{flushTime + 3600}).size(), 1U);
    close();
    EXPECT_EQ(value("SELECT active_seconds FROM app_hours WHERE name = 'After'"), "10.0");
  }
};

constexpr Fault faults[] = {{FailingVFS::Kind::once, SQLITE_IOERR},
                            {FailingVFS::Kind::once, SQLITE_FULL},
                            {FailingVFS::Kind::fromThenOn, SQLITE_IOERR},
                            {FailingVFS::Kind::fromThenOn, SQLITE_FULL}};

TEST_F(HistoryWriteErrors, AtEveryStepOfARunLoseNothingThatWasCommitted) {
  run();
  std::filesystem::rename(folder.path("support"), folder.path("begin"));
  restore();
  rows(
      "DELETE FROM readings WHERE start >= 1800000000;"
      "DELETE FROM app_hours WHERE bucket_start >= 1800000000;");
  folder.remove("begin");
  std::filesystem::copy(folder.path("support"), folder.path("begin"),
                        std::filesystem::copy_options::recursive);
  const Rows readings = rows(committedRows);
  const Rows hours = rows(committedHours);
  ASSERT_EQ(readings.size(), 672U);
  ASSERT_EQ(hours.size(), 35U);

  const int calls = callsOfARun();
  ASSERT_GT(calls, 20);
  for (const Fault& fault : faults) {
    for (int number = 1; number <= calls && !HasFailure(); ++number) {
      SCOPED_TRACE("call " + std::to_string(number) + " error " + std::to_string(fault.error));
      runWithFault(number, fault);
      EXPECT_EQ(rows(committedRows), readings);
      EXPECT_EQ(rows(committedHours), hours);
      expectWholeAndUsable();
    }
  }
  std::cout << calls << " calls of a run failed in four ways\n";
}

TEST_F(HistoryWriteErrors, AtEveryStepOfAFirstStartLeaveAFileThatTheNextStartCompletes) {
  const int calls = callsOfARun();
  ASSERT_GT(calls, 50);
  for (const Fault& fault : {faults[1], faults[2]}) {
    for (int number = 1; number <= calls && !HasFailure(); number += 3) {
      SCOPED_TRACE("call " + std::to_string(number) + " error " + std::to_string(fault.error));
      runWithFault(number, fault);
      expectWholeAndUsable();
      EXPECT_EQ(value("SELECT COUNT(*) FROM sqlite_schema WHERE type = 'table'"), "7");
    }
  }
}

TEST_F(HistoryWriteErrors, WithinAFlushLeaveEarlierFlushesInPlace) {
  const auto recorded = [this] {
    return number(
        "SELECT CAST(TOTAL(active_seconds) AS INTEGER) FROM app_hours WHERE name = "
        "'One'");
  };
  int failures = 0;
  for (const Fault& fault : faults) {
    for (int failing = 1; failing <= 40 && !HasFailure(); ++failing) {
      SCOPED_TRACE("call " + std::to_string(failing) + " error " + std::to_string(fault.error));
      restore();
      open().recordSample(sampleAt(flushTime), {groupNamed("One")}, 10);
      ASSERT_EQ(recorded(), 10);
      files.arm(failing, fault.kind, fault.error);
      history().recordSample(sampleAt(flushTime + 10), {groupNamed("One")}, 10);
      const bool isFailed = files.disarm() >= failing;
      EXPECT_GE(recorded(), 10);
      const auto before = recorded();
      history().recordSample(sampleAt(flushTime + 20), {groupNamed("One")}, 10);
      EXPECT_EQ(recorded(), before + 10) << "the flush after the failure is written";
      if (!isFailed) break;
      ++failures;
    }
  }
  EXPECT_GE(failures, 4 * 3) << "a flush calls the file system more than twice";
}

}  // namespace
}  // namespace korvantis
