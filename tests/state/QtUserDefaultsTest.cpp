#include <QByteArray>
#include <array>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/qt/QtUserDefaults.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::TemporaryFolder;
using ::testing::HasSubstr;

constexpr const char* key = "Korvantis.themeMode";

std::string contents(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(QtUserDefaults, AnAbsentFileAndAnAbsentKeyGiveNothing) {
  const TemporaryFolder folder;
  const UserDefaultsCalls calls = qtUserDefaultsCalls(folder.path("none.conf"));

  EXPECT_EQ(calls.stringForKey(key), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(folder.path("none.conf")));
}

TEST(QtUserDefaults, AValueIsOnDiskAtOnceUnderItsKeyAsGiven) {
  const TemporaryFolder folder;
  const std::string path = folder.path("deep/er/Korvantis.conf");
  qtUserDefaultsCalls(path).setString(key, "Dark");

  EXPECT_EQ(contents(path), "[General]\nKorvantis.themeMode=Dark\n");
}

TEST(QtUserDefaults, AValueIsReadBackByTheNextStart) {
  const TemporaryFolder folder;
  const std::string path = folder.path("Korvantis.conf");
  qtUserDefaultsCalls(path).setString(key, "Light");
  qtUserDefaultsCalls(path).setString("Korvantis.other", "");

  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey(key), "Light");
  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey("Korvantis.other"), "");
}

TEST(QtUserDefaults, AnyTextComesBackAsItWas) {
  const TemporaryFolder folder;
  const std::string path = folder.path("Korvantis.conf");
  for (const std::string text : {"a, b; c=d", "@Invalid()", "\"quoted\" \\ back", " blanks ",
                                 "+1 (555) 019-2834", "Grüße 🙂\nzweite Zeile", "[x]", "%20"}) {
    qtUserDefaultsCalls(path).setString("Korvantis.text", text);
    EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey("Korvantis.text"), text);
  }
}

TEST(QtUserDefaults, AFileWrittenByHandIsRead) {
  const TemporaryFolder folder;
  const std::string path =
      folder.write("Korvantis.conf", "; mine\n[General]\nKorvantis.themeMode = Dark\n");

  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey(key), "Dark");
}

TEST(QtUserDefaults, AListIsNoText) {
  const TemporaryFolder folder;
  const std::string path =
      folder.write("Korvantis.conf", "[General]\nKorvantis.themeMode=Dark, Light\n");

  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey(key), std::nullopt);
}

TEST(QtUserDefaults, WritingOneKeyKeepsTheOthers) {
  const TemporaryFolder folder;
  const std::string path =
      folder.write("Korvantis.conf", "[General]\nKorvantis.cooldown=30\n\n[Window]\nwidth=1200\n");
  qtUserDefaultsCalls(path).setString(key, "Dark");

  EXPECT_THAT(contents(path), HasSubstr("Korvantis.cooldown=30\n"));
  EXPECT_THAT(contents(path), HasSubstr("Korvantis.themeMode=Dark\n"));
  EXPECT_THAT(contents(path), HasSubstr("[Window]\nwidth=1200\n"));
}

TEST(QtUserDefaults, OfADamagedFileTheLinesThatMakeSenseCountAndStay) {
  const TemporaryFolder folder;
  const std::string path = folder.write("Korvantis.conf",
                                        "[General]\nKorvantis.themeMode=Dark\nno sense at "
                                        "all\n\x01\xff\xfe\nKorvantis.cooldown=30\n");
  const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
  EXPECT_EQ(calls.stringForKey(key), "Dark");
  calls.setString(key, "Light");

  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey(key), "Light");
  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey("Korvantis.cooldown"), "30");
}

TEST(QtUserDefaults, AFileOfGarbageCountsAsEmptyAndCanBeWritten) {
  const TemporaryFolder folder;
  std::string garbage;
  for (int index = 0; index < 4096; ++index)
    garbage.push_back(static_cast<char>((index * 7919 + 13) % 256));
  const std::string path = folder.write("Korvantis.conf", garbage);
  const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
  EXPECT_EQ(calls.stringForKey(key), std::nullopt);
  calls.setString(key, "Dark");

  EXPECT_EQ(qtUserDefaultsCalls(path).stringForKey(key), "Dark");
}

TEST(QtUserDefaults, AFolderInItsPlaceCountsAsEmptyAndTheValueLastsUntilTheEnd) {
  const TemporaryFolder folder;
  const std::string path = folder.folderAt("Korvantis.conf");
  const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
  EXPECT_EQ(calls.stringForKey(key), std::nullopt);
  calls.setString(key, "Dark");

  EXPECT_EQ(calls.stringForKey(key), "Dark");
  EXPECT_TRUE(std::filesystem::is_directory(path));
}

TEST(QtUserDefaults, AFileInThePlaceOfItsFolderDoesNoHarm) {
  const TemporaryFolder folder;
  const std::string path = folder.write("Korvantis", "mine") + "/Korvantis.conf";
  const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
  calls.setString(key, "Dark");

  EXPECT_EQ(calls.stringForKey(key), "Dark");
  EXPECT_EQ(contents(folder.path("Korvantis")), "mine");
}

/// Runs `body` in a child process as a user without rights; whether it gave true.
bool isTrueForNobody(const std::function<bool()>& body) {
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isUnprivileged = ::getuid() != 0 || ::setuid(65534) == 0;
    ::_exit(isUnprivileged && body() ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(QtUserDefaults, AnUnwritableFolderKeepsTheFileAndTheValueLastsUntilTheEnd) {
  const TemporaryFolder folder;
  namespace fs = std::filesystem;
  const std::string path = folder.write("Korvantis.conf", "[General]\nKorvantis.themeMode=Dark\n");
  fs::permissions(path, fs::perms(0444));
  fs::permissions(folder.path(), fs::perms(0555));

  EXPECT_TRUE(isTrueForNobody([&] {
    const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
    if (calls.stringForKey(key) != "Dark") return false;
    calls.setString(key, "Light");
    return calls.stringForKey(key) == "Light";
  }));
  fs::permissions(folder.path(), fs::perms(0755));
  EXPECT_EQ(contents(path), "[General]\nKorvantis.themeMode=Dark\n");
}

TEST(QtUserDefaults, AnUnreadableFileCountsAsEmpty) {
  const TemporaryFolder folder;
  namespace fs = std::filesystem;
  const std::string path = folder.write("Korvantis.conf", "[General]\nKorvantis.themeMode=Dark\n");
  fs::permissions(path, fs::perms(0000));
  fs::permissions(folder.path(), fs::perms(0755));

  EXPECT_TRUE(
      isTrueForNobody([&] { return qtUserDefaultsCalls(path).stringForKey(key) == std::nullopt; }));
}

TEST(QtUserDefaults, FlagsAndNumbersHaveTheirOwnForm) {
  const TemporaryFolder folder;
  const std::string path = folder.path("Korvantis.conf");
  const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
  calls.setBool("Korvantis.on", true);
  calls.setBool("Korvantis.off", false);
  calls.setInteger("Korvantis.minutes", 30);
  EXPECT_EQ(contents(path),
            "[General]\nKorvantis.minutes=30\nKorvantis.off=false\nKorvantis.on=true\n");

  const UserDefaultsCalls next = qtUserDefaultsCalls(path);
  EXPECT_TRUE(next.boolForKey("Korvantis.on"));
  EXPECT_FALSE(next.boolForKey("Korvantis.off"));
  EXPECT_FALSE(next.boolForKey("Korvantis.none"));
  EXPECT_EQ(next.integerForKey("Korvantis.minutes"), 30);
  EXPECT_EQ(next.integerForKey("Korvantis.none"), 0);
  EXPECT_TRUE(next.hasObjectForKey("Korvantis.off"));
  EXPECT_FALSE(next.hasObjectForKey("Korvantis.none"));
}

TEST(QtUserDefaults, FlagsAndNumbersWrittenByHandAreRead) {
  const TemporaryFolder folder;
  const auto stored = [&](const std::string& text) {
    return qtUserDefaultsCalls(folder.write("Korvantis.conf", "[General]\nkey=" + text + "\n"));
  };
  for (const char* yes : {"true", "TRUE", "yes", "1", "7"})
    EXPECT_TRUE(stored(yes).boolForKey("key")) << yes;
  for (const char* no : {"false", "no", "0", "", "a, b", "maybe"})
    EXPECT_FALSE(stored(no).boolForKey("key")) << no;
  EXPECT_EQ(stored("-12").integerForKey("key"), -12);
  EXPECT_EQ(stored("+5").integerForKey("key"), 5);
  EXPECT_EQ(stored("12 minutes").integerForKey("key"), 12);
  EXPECT_EQ(stored("2.9").integerForKey("key"), 2);
  EXPECT_EQ(stored("minutes").integerForKey("key"), 0);
  EXPECT_EQ(stored("99999999999999999999").integerForKey("key"), INT64_MAX);
  EXPECT_EQ(stored("-99999999999999999999").integerForKey("key"), INT64_MIN);
  EXPECT_TRUE(stored("a, b").hasObjectForKey("key"));
}

TEST(QtUserDefaults, TheFileIsForItsOwnerAloneSinceItHoldsAKey) {
  const TemporaryFolder folder;
  const std::string path = folder.path("Korvantis.conf");
  qtUserDefaultsCalls(path).setString("Korvantis.whatsAppApiKeyOrWebhook", "secret");
  EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
}

TEST(QtUserDefaults, NothingIsLeftBesideTheFile) {
  const TemporaryFolder folder;
  const UserDefaultsCalls calls = qtUserDefaultsCalls(folder.path("Korvantis.conf"));
  calls.setString(key, "Dark");
  calls.setString(key, "Light");
  calls.setString(key, "Light");
  int entries = 0;
  for ([[maybe_unused]] const auto& each : std::filesystem::directory_iterator(folder.path()))
    ++entries;
  EXPECT_EQ(entries, 1);
}

TEST(QtUserDefaults, AnEqualValueLeavesTheFileUntouched) {
  const TemporaryFolder folder;
  const std::string path = folder.path("Korvantis.conf");
  const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
  calls.setString(key, "Dark");
  std::filesystem::create_hard_link(path, folder.path("same"));
  calls.setString(key, "Dark");
  EXPECT_TRUE(std::filesystem::equivalent(path, folder.path("same")));
  calls.setString(key, "Light");
  EXPECT_FALSE(std::filesystem::equivalent(path, folder.path("same")));
}

TEST(QtUserDefaults, ALinkToTheFileStaysALink) {
  const TemporaryFolder folder;
  const std::string target = folder.write("dotfiles/mine.conf", "[General]\na=1\n");
  folder.link("Korvantis.conf", target);
  qtUserDefaultsCalls(folder.path("Korvantis.conf")).setString(key, "Dark");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("Korvantis.conf")));
  EXPECT_THAT(contents(target), HasSubstr("Korvantis.themeMode=Dark\n"));
  EXPECT_THAT(contents(target), HasSubstr("a=1\n"));
}

TEST(QtUserDefaults, AReaderNeverSeesHalfAFile) {
  const TemporaryFolder folder;
  const std::string path = folder.path("Korvantis.conf");
  qtUserDefaultsCalls(path).setString("Korvantis.text", std::string(20000, 'a'));
  const pid_t writer = ::fork();
  if (writer == 0) {
    const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
    for (int round = 0; round < 60; ++round)
      calls.setString("Korvantis.text", std::string(20000, round % 2 == 0 ? 'b' : 'c'));
    ::_exit(0);
  }
  int status = 0;
  int looks = 0;
  while (::waitpid(writer, &status, WNOHANG) == 0) {
    ASSERT_EQ(contents(path).size(), std::string("[General]\nKorvantis.text=\n").size() + 20000);
    ++looks;
  }
  EXPECT_GT(looks, 0);
  EXPECT_EQ(status, 0);
}

/// Has two processes at a time write a key of their own again and again; whether both ended well.
bool isWrittenByTwo(const std::string& path, int rounds) {
  std::array<pid_t, 2> writers{};
  for (std::size_t index = 0; index < writers.size(); ++index) {
    writers[index] = ::fork();
    if (writers[index] != 0) continue;
    const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
    const std::string own = "Korvantis.writer" + std::to_string(index);
    for (int round = 1; round <= rounds; ++round) calls.setInteger(own, 1000 + round);
    ::_exit(0);
  }
  bool isWell = true;
  for (const pid_t writer : writers) {
    int status = -1;
    ::waitpid(writer, &status, 0);
    isWell = isWell && status == 0;
  }
  return isWell;
}

TEST(QtUserDefaults, TwoProcessesDoNotDestroyEachOthersKeys) {
  const TemporaryFolder folder;
  const std::string path = folder.write("Korvantis.conf", "[General]\nKorvantis.kept=yes\n");
  for (int time = 0; time < 3; ++time) {
    ASSERT_TRUE(isWrittenByTwo(path, 60));
    const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
    EXPECT_EQ(calls.integerForKey("Korvantis.writer0"), 1060);
    EXPECT_EQ(calls.integerForKey("Korvantis.writer1"), 1060);
    EXPECT_EQ(calls.stringForKey("Korvantis.kept"), "yes");
    calls.setInteger("Korvantis.writer0", 0);
    calls.setInteger("Korvantis.writer1", 0);
  }
}

TEST(QtUserDefaults, AFileThatMayNotBeReadIsNotReplacedEither) {
  const TemporaryFolder folder;
  namespace fs = std::filesystem;
  const std::string path = folder.write("Korvantis.conf", "[General]\nKorvantis.themeMode=Dark\n");
  fs::permissions(path, fs::perms(0000));
  fs::permissions(folder.path(), fs::perms(0777));
  EXPECT_TRUE(isTrueForNobody([&] {
    const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
    calls.setString(key, "Light");
    return calls.stringForKey(key) == "Light";
  }));
  fs::permissions(path, fs::perms(0600));
  EXPECT_EQ(contents(path), "[General]\nKorvantis.themeMode=Dark\n");
}

TEST(QtUserDefaults, AFullDiskLeavesTheFileAsItWas) {
  const TemporaryFolder folder;
  const std::string before =
      "[General]\nKorvantis.themeMode=Dark\nKorvantis.text=" + std::string(2000, 'a') + "\n";
  const std::string path = folder.write("Korvantis.conf", before);
  const pid_t child = ::fork();
  if (child == 0) {
    // No file of this process grows beyond that: the nearest thing to a full disk.
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{.rlim_cur = 1000, .rlim_max = 1000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const UserDefaultsCalls calls = qtUserDefaultsCalls(path);
    calls.setString(key, "Light");
    ::_exit(calls.stringForKey(key) == "Light" ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0) << "the value lasts until the end";
  EXPECT_EQ(contents(path), before);
}

TEST(QtUserDefaults, TheFileLiesUnderTheDesktopsSettingsFolder) {
#ifdef __linux__
  const TemporaryFolder folder;
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.path("settings")));
  qtUserDefaultsCalls().setString(key, "Dark");
  if (before.isNull()) {
    qunsetenv("XDG_CONFIG_HOME");
  } else {
    qputenv("XDG_CONFIG_HOME", before);
  }

  EXPECT_EQ(contents(folder.path("settings/Korvantis/Korvantis.conf")),
            "[General]\nKorvantis.themeMode=Dark\n");
#else
  GTEST_SKIP() << "other systems have folders of their own";
#endif
}

}  // namespace
}  // namespace korvantis
