#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <random>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "history/HelperProgram.h"
#include "history/HistoryFixture.h"
#include "support/ChildProcess.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::groupNamed;
using test::HelperProgram;
using test::HistoryTest;
using test::sampleAt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double flushTime = 1'700'001'234;

class HistoryFaults : public HistoryTest {
 protected:
  /// Opens the database, uses all of it and gives its path below the test's folder and what it
  /// read: "support/... 672 5 downloads" or the like.
  std::string used() {
    history().recordSample(sampleAt(flushTime), {groupNamed("Editor")}, 2);
    std::string text = history().databasePath().substr(folder.path().size() + 1);
    text += " " + std::to_string(history().loadReadings(Instant{0}).size());
    text += " " + std::to_string(history().loadAppSummaries(Instant{0}).size());
    const ExportedCSVFiles files = history().exportCSVToDownloads(Instant{0});
    return text + (files.readingsURL ? " readings" : "") + (files.appsURL ? " apps" : "");
  }

  /// The same in a process of a user whom permissions bind.
  std::string usedByOrdinaryUser() {
    return ChildProcess::answerOf([this] {
      if (::geteuid() == 0 && !becomeNobody()) return std::string("still privileged");
      return used();
    });
  }

  static bool becomeNobody() {
    constexpr uid_t nobody = 65534;
    return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
           ::setresuid(nobody, nobody, nobody) == 0;
  }

  /// Opens what lies in the test's folder for every user.
  void share(const std::string& relative, mode_t mode) const {
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    std::filesystem::create_directories(folder.path(relative));
    ASSERT_EQ(::chmod(folder.path(relative).c_str(), mode), 0);
  }

  void setMode(const std::string& relative, mode_t mode) const {
    ASSERT_EQ(::chmod(folder.path(relative).c_str(), mode), 0);
  }

  void makeDatabase() {
    open();
    close();
  }
};

TEST_F(HistoryFaults, AReadOnlyApplicationSupportFolderGivesTheTemporaryOne) {
  share("support", 0555);
  share("temporary", 0777);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "temporary/Korvantis/history.sqlite 673 6 readings apps");
}

TEST_F(HistoryFaults, AMissingApplicationSupportFolderThatCanNotBeMadeGivesTheTemporaryOne) {
  share("temporary", 0777);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "temporary/Korvantis/history.sqlite 673 6 readings apps");
  EXPECT_FALSE(std::filesystem::exists(folder.path("support")));
}

TEST_F(HistoryFaults, AnUnreadableFolderGivesTheTemporaryOneAndItsFileStays) {
  makeDatabase();
  const std::string bytes = bytesOf("support/Korvantis/history.sqlite");
  share("support/Korvantis", 0000);
  share("temporary", 0777);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "temporary/Korvantis/history.sqlite 673 6 readings apps");
  setMode("support/Korvantis", 0700);
  EXPECT_EQ(bytesOf("support/Korvantis/history.sqlite"), bytes);
}

TEST_F(HistoryFaults, AnUnreadableFileGivesTheTemporaryFolder) {
  makeDatabase();
  share("support", 0755);
  share("support/Korvantis", 0777);
  setMode("support/Korvantis/history.sqlite", 0000);
  share("temporary", 0777);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "temporary/Korvantis/history.sqlite 673 6 readings apps");
}

TEST_F(HistoryFaults, WithNoFolderToWriteToTheProgramGoesOnWithoutAHistory) {
  share("support", 0555);
  share("temporary", 0555);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "temporary/Korvantis/history.sqlite 0 0 readings apps");
}

TEST_F(HistoryFaults, AWriteProtectedFileIsReadAndNotLeftForAnother) {
  makeDatabase();
  share("support", 0755);
  share("support/Korvantis", 0777);
  setMode("support/Korvantis/history.sqlite", 0444);
  share("temporary", 0777);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "support/Korvantis/history.sqlite 672 5 readings apps")
      << "the flush is dropped";
}

TEST_F(HistoryFaults, AWriteProtectedFileInAWriteProtectedFolderHarmsNobody) {
  makeDatabase();
  share("support", 0755);
  share("support/Korvantis", 0555);
  setMode("support/Korvantis/history.sqlite", 0444);
  share("temporary", 0777);
  share("downloads", 0777);
  EXPECT_EQ(usedByOrdinaryUser(), "support/Korvantis/history.sqlite 0 0 readings apps");
  EXPECT_EQ(value("SELECT COUNT(*) FROM readings"), "672");
}

TEST_F(HistoryFaults, DownloadsWithoutWritePermissionGiveNoFilesAndTheOldOnesStay) {
  share("support", 0777);
  share("downloads", 0555);
  folder.write("downloads/ostrel-system-readings.csv", "old");
  EXPECT_EQ(usedByOrdinaryUser(), "support/Korvantis/history.sqlite 673 6")
      << "the load work is done all the same";
  EXPECT_EQ(bytesOf("downloads/ostrel-system-readings.csv"), "old");
}

TEST_F(HistoryFaults, AFileThatIsNoDatabaseStaysAsItIs) {
  folder.folderAt("downloads");
  const std::string text(5000, 'x');
  folder.write("support/Korvantis/history.sqlite", text);
  EXPECT_EQ(used(), "support/Korvantis/history.sqlite 0 0 readings apps");
  close();
  EXPECT_EQ(bytesOf("support/Korvantis/history.sqlite"), text);
}

TEST_F(HistoryFaults, AnEmptyFileBecomesADatabase) {
  folder.folderAt("downloads");
  folder.write("support/Korvantis/history.sqlite", "");
  EXPECT_EQ(used(), "support/Korvantis/history.sqlite 673 6 readings apps");
}

TEST_F(HistoryFaults, ATruncatedFileOfAnyLengthHarmsNobody) {
  folder.folderAt("downloads");
  makeDatabase();
  const std::string whole = bytesOf("support/Korvantis/history.sqlite");
  for (std::size_t length = whole.size() - 1; length > 0; length = length * 3 / 4) {
    folder.remove("support/Korvantis");
    folder.write("support/Korvantis/history.sqlite", whole.substr(0, length));
    open();
    EXPECT_THAT(used(), ::testing::StartsWith("support/Korvantis/history.sqlite ")) << length;
    EXPECT_LE(history().loadReadings(Instant{0}).size(), 673U + 672U) << length;
    close();
  }
}

TEST_F(HistoryFaults, ADamagedFileHarmsNobody) {
  folder.folderAt("downloads");
  makeDatabase();
  const std::string whole = bytesOf("support/Korvantis/history.sqlite");
  std::mt19937 chance(20);
  std::uniform_int_distribution<std::size_t> place(0, whole.size() - 1);
  for (int round = 0; round < 60; ++round) {
    std::string damaged = whole;
    for (int index = 0; index < 40; ++index) {
      // The first rounds damage the beginning, where the schema lies.
      const std::size_t at = round < 30 ? place(chance) % 4096 : place(chance);
      damaged[at] = static_cast<char>(chance());
    }
    folder.remove("support/Korvantis");
    folder.write("support/Korvantis/history.sqlite", damaged);
    open();
    EXPECT_THAT(used(), ::testing::StartsWith("support/Korvantis/history.sqlite ")) << round;
    close();
  }
}

TEST_F(HistoryFaults, ASchemaThatLacksAColumnOfTheReadingsStillTakesTheLedger) {
  folder.folderAt("support/Korvantis");
  folder.folderAt("downloads");
  rows(
      "CREATE TABLE readings (start INTEGER PRIMARY KEY, seconds REAL NOT NULL);"
      "INSERT INTO readings VALUES (300, 7);");
  EXPECT_EQ(used(), "support/Korvantis/history.sqlite 0 6 readings apps");
  close();
  EXPECT_EQ(value("SELECT COUNT(*) FROM app_hours"), "36");
  EXPECT_EQ(rows("SELECT * FROM readings"), (test::Rows{{"300", "7.0"}})) << "nothing is migrated";
}

TEST_F(HistoryFaults, ASchemaThatLacksAColumnOfTheLedgerStillTakesTheReadings) {
  folder.folderAt("support/Korvantis");
  folder.folderAt("downloads");
  rows("CREATE TABLE app_hours (bucket_start INTEGER NOT NULL, app_id TEXT NOT NULL);");
  EXPECT_EQ(used(), "support/Korvantis/history.sqlite 673 0 readings apps");
}

TEST_F(HistoryFaults, AWriterInAnotherProcessCostsTheFlushAndNothingElse) {
  open();
  HelperProgram other({"hold", path(), "BEGIN IMMEDIATE;"});
  ASSERT_EQ(other.readLine(), "ready\n");

  history().recordSample(sampleAt(flushTime), {groupNamed("Editor")}, 2);
  EXPECT_THAT(history().loadReadings(Instant{0}), SizeIs(672)) << "reading goes on";
  other.process().end();

  history().recordSample(sampleAt(flushTime + 10), {groupNamed("Editor")}, 2);
  EXPECT_THAT(history().loadReadings(Instant{0}), SizeIs(673));
  EXPECT_EQ(history().loadReadings(Instant{flushTime - 300}).at(0).seconds, 10)
      << "the lost flush is not tried again";
  EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
}

TEST_F(HistoryFaults, AFileLockedByAnotherProcessFromTheStartLeavesNoHistoryUntilItIsFree) {
  makeDatabase();
  HelperProgram other({"hold", path(),
                       "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; "
                       "UPDATE readings SET seconds = 900;"});
  ASSERT_EQ(other.readLine(), "ready\n");

  history().recordSample(sampleAt(flushTime), {groupNamed("Editor")}, 2);
  EXPECT_THAT(history().loadReadings(Instant{0}), IsEmpty());
  EXPECT_THAT(history().loadAppSummaries(Instant{0}), IsEmpty());
  EXPECT_EQ(history().databasePath(), path());
  other.process().end();

  history().recordSample(sampleAt(flushTime + 10), {groupNamed("Editor")}, 2);
  EXPECT_THAT(history().loadReadings(Instant{0}), SizeIs(673));
  EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
}

TEST_F(HistoryFaults, TwoDatabasesOnOneFileTakeTurns) {
  open();
  HistoryDatabase second(platform);
  for (int turn = 0; turn < 20; ++turn) {
    history().recordSample(sampleAt(flushTime + 20 * turn), {groupNamed("Editor")}, 20);
    second.recordSample(sampleAt(flushTime + 20 * turn + 10), {groupNamed("Editor")}, 20);
  }
  EXPECT_EQ(value("SELECT active_seconds FROM app_hours WHERE name = 'Editor'"), "800.0");
  EXPECT_EQ(second.loadReadings(Instant{0}), history().loadReadings(Instant{0}));
}

TEST_F(HistoryFaults, TwoProcessesOnOneFileLeaveItWhole) {
  makeDatabase();
  HelperProgram first({"record", folder.path(), "0", "300"});
  HelperProgram second({"record", folder.path(), "1000000", "300"});
  EXPECT_EQ(first.process().waitForSignal(), 0);
  EXPECT_EQ(second.process().waitForSignal(), 0);

  EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
  for (const char* range : {"start BETWEEN 1800000000 AND 1800003000", "start >= 1810000000"}) {
    const auto seconds =
        number(std::string("SELECT CAST(TOTAL(seconds) AS INTEGER) FROM readings WHERE ") + range);
    EXPECT_GT(seconds, 0) << range;
    EXPECT_LE(seconds, 3000) << range;
  }
  EXPECT_EQ(value("SELECT COUNT(*) FROM readings WHERE start < 1800000000"), "672");
}

TEST_F(HistoryFaults, TwoFirstStartsAtOnceLeaveAFileThatTheNextStartCompletes) {
  for (int round = 0; round < 10; ++round) {
    folder.remove("support");
    HelperProgram first({"record", folder.path(), "0", "3"});
    HelperProgram second({"record", folder.path(), "1000000", "3"});
    EXPECT_EQ(first.process().waitForSignal(), 0);
    EXPECT_EQ(second.process().waitForSignal(), 0);
    EXPECT_EQ(value("PRAGMA integrity_check"), "ok");
    open();
    EXPECT_EQ(value("SELECT COUNT(*) FROM sqlite_schema WHERE type = 'table'"), "7");
    close();
  }
}

/// A folder on a small disk of its own, which no other process sees.
class HistoryFullDisk : public HistoryFaults {
 protected:
  /// Runs `body` with a disk of that size in the place of "support" and "downloads".
  std::string onSmallDisk(const std::string& size, const std::function<std::string()>& body) {
    const std::string disk = folder.folderAt("disk");
    folder.link("support", disk);
    folder.link("downloads", disk);
    return ChildProcess::answerOf([&] {
      const bool isMounted =
          ::unshare(CLONE_NEWNS) == 0 &&
          ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
          ::mount("tmpfs", disk.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
      return isMounted ? body() : std::string(notMounted);
    });
  }

  /// Fills the disk to its last page.
  void fill() const {
    std::ofstream ballast(folder.path("disk/ballast"), std::ios::binary);
    const std::string chunk(4096, 'x');
    while (ballast.write(chunk.data(), 4096).flush()) {
    }
  }

  static constexpr const char* notMounted = "not mounted";
};

TEST_F(HistoryFullDisk, FromTheBeginningThereIsNoHistory) {
  const std::string answer = onSmallDisk("8k", [this] { return used(); });
  if (answer == notMounted) GTEST_SKIP() << "this process may not mount a small disk";
  EXPECT_EQ(answer, "support/Korvantis/history.sqlite 0 0");
}

TEST_F(HistoryFullDisk, LaterOnCostsTheFlushesAndTheExportAndNothingThatIsThere) {
  const std::string answer = onSmallDisk("4m", [this] {
    std::string text = used() + "; ";
    fill();
    // More than what is left of the journal's last page.
    for (int flush = 1; flush <= 60; ++flush) {
      std::vector<AppGroup> groups;
      for (int index = 0; index < 35; ++index) {
        groups.push_back(groupNamed(std::to_string(flush) + "x" + std::to_string(index)));
      }
      history().recordSample(sampleAt(flushTime + 3600.0 * flush), groups, 2);
    }
    const auto readings = history().loadReadings(Instant{0}).size();
    text += readings >= 673 && readings < 733 ? "some lost; " : "none lost; ";
    const std::string old = bytesOf("disk/ostrel-system-readings.csv");
    const ExportedCSVFiles files = history().exportCSVToDownloads(Instant{0});
    text += files == ExportedCSVFiles{} ? "not exported; " : "exported; ";
    text += !old.empty() && bytesOf("disk/ostrel-system-readings.csv") == old ? "old file; " : "";
    folder.remove("disk/ballast");
    history().recordSample(sampleAt(flushTime + 360'000.0), {groupNamed("Editor")}, 2);
    const bool isWritten = history().loadReadings(Instant{0}).size() == readings + 1;
    text += isWritten ? "recorded again; " : "";
    close();
    text += value("PRAGMA integrity_check");
    return text + " " + value("SELECT COUNT(*) FROM readings WHERE start < 1700000000");
  });
  if (answer == notMounted) GTEST_SKIP() << "this process may not mount a small disk";
  EXPECT_EQ(answer,
            "support/Korvantis/history.sqlite 673 6 readings apps; some lost; not exported; "
            "old file; recorded again; ok 672");
}

}  // namespace
}  // namespace korvantis
