#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <signal.h>
#include <string>
#include <thread>

#include "history/HelperProgram.h"
#include "history/HistoryFixture.h"

namespace korvantis {
namespace {

using test::HelperProgram;
using test::numberOf;
using test::TemporaryFolder;
using test::valueOf;

constexpr int kills = 200;
/// After so many kills a run begins with a new database, so that some meet the first start.
constexpr int killsForADatabase = 20;

/// One database that is killed again and again, and how many flushes it must hold.
struct KilledDatabase {
  TemporaryFolder folder;
  std::int64_t flushes = 0;

  std::string path() const { return folder.path("support/Korvantis/history.sqlite"); }

  /// Records from where the last run stopped and is killed at a random moment; gives how many
  /// flushes were over by then.
  std::int64_t recordAndKill(std::mt19937& chance, std::chrono::microseconds longest) {
    HelperProgram helper({"record", folder.path(), std::to_string(flushes), "0"});
    std::uniform_int_distribution<std::int64_t> moment(0, longest.count());
    std::this_thread::sleep_for(std::chrono::microseconds(moment(chance)));
    ::kill(helper.process().pid(), SIGKILL);
    const std::string output = helper.readAll();
    EXPECT_EQ(helper.process().waitForSignal(), SIGKILL);
    return std::count(output.begin(), output.end(), '\n');
  }

  /// Every flush that was over is there, and of the one that was under way all or nothing.
  void expectWholeAfter(std::int64_t finished, int* unfinished) {
    if (!std::filesystem::exists(path())) {
      EXPECT_EQ(finished + flushes, 0) << "what was never made has no flushes";
      return;
    }
    ASSERT_EQ(valueOf(path(), "PRAGMA integrity_check;"), "ok");
    if (valueOf(path(), "SELECT COUNT(*) FROM sqlite_schema WHERE type = 'table'") != "7") {
      EXPECT_EQ(finished + flushes, 0) << "a database without its tables has no flushes";
      return;
    }
    const auto recorded = [this](const char* column, const char* table, const char* filter) {
      return numberOf(path(), std::string("SELECT CAST(TOTAL(") + column +
                                  ") / 10 AS INTEGER) FROM " + table + " WHERE " + filter);
    };
    const auto stored = recorded("seconds", "readings", "start >= 1800000000");
    EXPECT_EQ(recorded("active_seconds", "app_hours", "name = 'One'"), stored);
    EXPECT_EQ(recorded("active_seconds", "app_hours", "name = 'Two'"), stored);
    EXPECT_GE(stored, flushes + finished) << "a flush that was over is lost";
    EXPECT_LE(stored, flushes + finished + 1);
    *unfinished += stored > flushes + finished ? 1 : 0;
    const std::string seeded =
        valueOf(path(), "SELECT COUNT(*) FROM readings WHERE start < 1800000000");
    EXPECT_TRUE(seeded == "672" || (seeded == "0" && stored == 0)) << seeded;
    flushes = stored;
  }
};

/// How long a start with a new database takes until its first flush is over.
std::chrono::microseconds timeToFirstFlush() {
  const TemporaryFolder folder;
  const auto begin = std::chrono::steady_clock::now();
  HelperProgram helper({"record", folder.path(), "0", "1"});
  helper.readLine();
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                               begin);
}

TEST(HistoryKill, TwoHundredKillsAtRandomMomentsLoseNothingThatWasOver) {
  std::mt19937 chance(std::random_device{}());
  const auto longest = timeToFirstFlush() * 3 / 2;
  int runsWithFlushes = 0;
  int unfinished = 0;
  std::int64_t total = 0;
  for (int database = 0; database < kills / killsForADatabase; ++database) {
    KilledDatabase killed;
    for (int run = 0; run < killsForADatabase && !HasFailure(); ++run) {
      const std::int64_t finished = killed.recordAndKill(chance, longest);
      killed.expectWholeAfter(finished, &unfinished);
      runsWithFlushes += finished > 0 ? 1 : 0;
      total += finished;
    }
  }
  EXPECT_GT(runsWithFlushes, 0) << "every run was killed before its first flush";
  std::cout << kills << " kills, " << runsWithFlushes << " of them while recording, " << total
            << " flushes over, " << unfinished << " written and not yet told, none lost\n";
}

}  // namespace
}  // namespace korvantis
