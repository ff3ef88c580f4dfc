#include <QByteArray>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
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
