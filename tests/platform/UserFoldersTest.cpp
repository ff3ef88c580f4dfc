#include <filesystem>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <optional>
#include <pwd.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileManagerCalls.h"
#include "platform/ScopedVariable.h"
#include "platform/linux/UserFolders.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ScopedVariable;
using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::MatchesRegex;

constexpr std::optional<std::string> unset;

mode_t modeOf(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 ? facts.st_mode & 07777U : 0;
}

/// A user with a home and no settings for folders.
class UserFolders : public testing::Test {
 protected:
  TemporaryFolder home;
  ScopedVariable homeVariable{"HOME", home.path()};
  ScopedVariable data{"XDG_DATA_HOME", unset};
  ScopedVariable configuration{"XDG_CONFIG_HOME", unset};
  FileManagerCalls files = systemFileManagerCalls();
};

TEST_F(UserFolders, ApplicationSupportLiesInTheHome) {
  EXPECT_THAT(files.applicationSupportDirectories(), ElementsAre(home.path(".local/share")));
}

TEST_F(UserFolders, ApplicationSupportFollowsTheEnvironment) {
  const ScopedVariable chosen("XDG_DATA_HOME", "/srv/data of ada");
  EXPECT_THAT(files.applicationSupportDirectories(), ElementsAre("/srv/data of ada"));
}

TEST_F(UserFolders, AnEmptyOrRelativeApplicationSupportIsNone) {
  for (const char* value : {"", "data", "./data", "~/data"}) {
    const ScopedVariable chosen("XDG_DATA_HOME", value);
    EXPECT_THAT(files.applicationSupportDirectories(), ElementsAre(home.path(".local/share")))
        << value;
  }
}

TEST_F(UserFolders, TheHomeIsCanonical) {
  const TemporaryFolder links;
  links.link("ada", home.path());
  const ScopedVariable linked("HOME", links.path("ada"));
  EXPECT_EQ(files.homeDirectoryForCurrentUser(), home.path());
  EXPECT_THAT(files.applicationSupportDirectories(), ElementsAre(home.path(".local/share")));
  EXPECT_THAT(files.downloadsDirectories(), ElementsAre(home.path("Downloads")));
}

TEST_F(UserFolders, WithoutAHomeInTheEnvironmentThePasswordEntryTells) {
  const passwd* entry = ::getpwuid(::getuid());
  if (entry == nullptr) GTEST_SKIP() << "this user has no password entry";
  const std::string expected = std::filesystem::weakly_canonical(entry->pw_dir).string();
  for (const auto& value : {unset, std::optional<std::string>("relative")}) {
    const ScopedVariable none("HOME", value);
    EXPECT_EQ(files.homeDirectoryForCurrentUser(), expected);
  }
}

TEST_F(UserFolders, AHomeThatIsNotThereIsTakenAsItStands) {
  const ScopedVariable missing("HOME", "/nowhere/ada");
  EXPECT_EQ(files.homeDirectoryForCurrentUser(), "/nowhere/ada");
}

TEST_F(UserFolders, DownloadsLieInTheHomeWithoutAUserDirsFile) {
  EXPECT_THAT(files.downloadsDirectories(), ElementsAre(home.path("Downloads")));
}

TEST_F(UserFolders, DownloadsFollowTheUserDirsFile) {
  home.write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Geladenes\"\n");
  EXPECT_THAT(files.downloadsDirectories(), ElementsAre(home.path("Geladenes")));
}

TEST_F(UserFolders, TheUserDirsFileLiesWhereTheEnvironmentSays) {
  home.write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"/wrong\"\n");
  home.write("settings/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"/right\"\n");
  const ScopedVariable chosen("XDG_CONFIG_HOME", home.path("settings"));
  EXPECT_THAT(files.downloadsDirectories(), ElementsAre("/right"));
  const ScopedVariable relative("XDG_CONFIG_HOME", "settings");
  EXPECT_THAT(files.downloadsDirectories(), ElementsAre("/wrong"));
}

TEST_F(UserFolders, AUserDirsFileThatIsAFolderNamesNothing) {
  home.folderAt(".config/user-dirs.dirs");
  EXPECT_THAT(files.downloadsDirectories(), ElementsAre(home.path("Downloads")));
}

TEST(UserDirsFile, CommentsAndOtherFoldersArePassedOver) {
  EXPECT_EQ(downloadFolderOf("# This file is written by a tool.\n"
                             "# XDG_DOWNLOAD_DIR=\"/comment\"\n"
                             "\n"
                             "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
                             "XDG_DOWNLOAD_DIR=\"$HOME/Loads\"\n"
                             "XDG_MUSIC_DIR=\"$HOME/Music\"\n",
                             "/home/ada"),
            "/home/ada/Loads");
}

TEST(UserDirsFile, AbsolutePathsStandAsTheyAre) {
  EXPECT_EQ(downloadFolderOf("XDG_DOWNLOAD_DIR=\"/srv/my loads\"", "/home/ada"), "/srv/my loads");
}

TEST(UserDirsFile, TheHomeItselfAndSlashesAtTheEnd) {
  EXPECT_EQ(downloadFolderOf("XDG_DOWNLOAD_DIR=\"$HOME/\"\n", "/home/ada"), "/home/ada");
  EXPECT_EQ(downloadFolderOf("XDG_DOWNLOAD_DIR=\"$HOME/Loads//\"\n", "/home/ada"),
            "/home/ada/Loads");
  EXPECT_EQ(downloadFolderOf("XDG_DOWNLOAD_DIR=\"/\"\n", "/home/ada"), "/");
}

TEST(UserDirsFile, BackslashesEscapeTheNextLetter) {
  EXPECT_EQ(downloadFolderOf(R"(XDG_DOWNLOAD_DIR="$HOME/a \"b\" \\ \$c")", "/home/ada"),
            R"(/home/ada/a "b" \ $c)");
  EXPECT_EQ(downloadFolderOf(R"(XDG_DOWNLOAD_DIR="\$HOME/a")", "/home/ada"), "")
      << "an escaped dollar is a dollar";
}

TEST(UserDirsFile, BlanksMayStandAroundTheName) {
  EXPECT_EQ(downloadFolderOf(" \t XDG_DOWNLOAD_DIR \t= \t\"/a\" # why", "/home/ada"), "/a");
}

TEST(UserDirsFile, TheLastLineThatNamesAFolderCounts) {
  EXPECT_EQ(downloadFolderOf("XDG_DOWNLOAD_DIR=\"/a\"\nXDG_DOWNLOAD_DIR=\"/b\"\n"
                             "XDG_DOWNLOAD_DIR=nonsense\n",
                             "/home/ada"),
            "/b");
}

TEST(UserDirsFile, WhatIsNoQuotedPathNamesNothing) {
  for (const char* line :
       {"", "XDG_DOWNLOAD_DIR=", "XDG_DOWNLOAD_DIR", "XDG_DOWNLOAD_DIR=/a", "XDG_DOWNLOAD_DIR=\"/a",
        "XDG_DOWNLOAD_DIR=\"\"", "XDG_DOWNLOAD_DIR=\"a\"", "XDG_DOWNLOAD_DIR=\"$HOME\"",
        "XDG_DOWNLOAD_DIR=\"$HOMEWORK/a\"", "XDG_DOWNLOAD_DIR=\"${HOME}/a\"",
        "XDG_DOWNLOAD_DIR=\"/a\\", "XDG_DOWNLOAD_DIRS=\"/a\"", "NOT_XDG_DOWNLOAD_DIR=\"/a\"",
        "export XDG_DOWNLOAD_DIR=\"/a\""}) {
    EXPECT_EQ(downloadFolderOf(line, "/home/ada"), "") << line;
  }
}

TEST(UserDirsFile, BadTextNamesNothingAndHidesNothing) {
  EXPECT_EQ(downloadFolderOf("XDG_DOWNLOAD_DIR=\"/a\xFFz\"\n", "/home/ada"), "");
  EXPECT_EQ(downloadFolderOf(std::string("XDG_DOWNLOAD_DIR=\"/a\0z\"\n", 24), "/home/ada"), "");
  EXPECT_EQ(downloadFolderOf("\xFF\xFE\nXDG_DOWNLOAD_DIR=\"/\xC3\xA4\"\n\xC3", "/home/ada"),
            "/\xC3\xA4");
}

TEST_F(UserFolders, TheTemporaryFolderFollowsTheEnvironment) {
  const std::string folder = home.folderAt("temporary");
  const ScopedVariable chosen("TMPDIR", folder);
  EXPECT_EQ(files.temporaryDirectory(), folder);
}

TEST_F(UserFolders, ATemporaryFolderThatIsNotThereIsPassedOver) {
  const std::string answers = ChildProcess::answerOf([this] {
    const auto answerFor = [this](const std::string& value) {
      const ScopedVariable chosen("TMPDIR", value);
      return files.temporaryDirectory();
    };
    home.write("file", "x");
    const std::string own = answerFor("relative");
    const bool isPassedOver =
        answerFor(home.path("missing")) == own && answerFor(home.path("file")) == own;
    ::rmdir(own.c_str());  // when nobody has put anything in
    return own + (isPassedOver ? " passed over" : " taken");
  });
  EXPECT_THAT(answers, MatchesRegex("/tmp/korvantis-" + std::to_string(::getuid()) +
                                    "(-......)? passed over"));
}

TEST_F(UserFolders, WithoutATemporaryFolderInTheEnvironmentItIsAPrivateOne) {
  // In a copy of this process, since the folder is chosen once for the life of a program.
  const std::string answer = ChildProcess::answerOf([this] {
    const ScopedVariable relative("TMPDIR", "tmp");
    const std::string folder = files.temporaryDirectory();
    const ScopedVariable none("TMPDIR", unset);
    const bool isSame = files.temporaryDirectory() == folder;
    const mode_t mode = modeOf(folder);
    ::rmdir(folder.c_str());  // when nobody has put anything in
    return folder + (isSame ? " " : " another ") + std::to_string(mode);
  });
  EXPECT_THAT(answer, MatchesRegex("/tmp/korvantis-" + std::to_string(::getuid()) + "(-......)? " +
                                   std::to_string(0700)));
}

TEST_F(UserFolders, WhereNothingCanBeMadeInTheTemporaryFolderTheHomeStandsIn) {
  const std::string answer = ChildProcess::answerOf([this] {
    const bool isReadOnly = ::unshare(CLONE_NEWNS) == 0 &&
                            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                            ::mount("tmpfs", "/tmp", "tmpfs", MS_RDONLY, nullptr) == 0;
    if (!isReadOnly) return std::string("not mounted");
    const ScopedVariable elsewhere("HOME", "/var");
    const ScopedVariable none("TMPDIR", unset);
    return files.temporaryDirectory();
  });
  if (answer == "not mounted") GTEST_SKIP() << "this process may not mount a read-only disk";
  EXPECT_EQ(answer, "/var");
}

class PrivateFolder : public testing::Test {
 protected:
  TemporaryFolder parent;
  std::string expected = parent.path("korvantis-" + std::to_string(::getuid()));

  void expectAnotherFolder() const {
    const std::string made = privateFolder(parent.path());
    EXPECT_THAT(made, MatchesRegex(expected + "-......"));
    EXPECT_EQ(modeOf(made), 0700U);
    EXPECT_TRUE(std::filesystem::is_empty(made));
  }
};

TEST_F(PrivateFolder, IsMadeForThisUserAlone) {
  EXPECT_EQ(privateFolder(parent.path()), expected);
  EXPECT_EQ(modeOf(expected), 0700U);
  EXPECT_TRUE(std::filesystem::is_directory(expected));
}

TEST_F(PrivateFolder, IsFoundAgainByTheNextStart) {
  privateFolder(parent.path());
  parent.write(std::filesystem::path(expected).filename().string() + "/kept", "x");
  EXPECT_EQ(privateFolder(parent.path()), expected);
  EXPECT_TRUE(std::filesystem::exists(expected + "/kept"));
}

TEST_F(PrivateFolder, OneThatOthersCanLookIntoIsNotTaken) {
  for (const mode_t mode : {0755U, 0701U, 0770U}) {
    ::mkdir(expected.c_str(), 0700);
    ASSERT_EQ(::chmod(expected.c_str(), mode), 0);
    expectAnotherFolder();
  }
}

TEST_F(PrivateFolder, ALinkOrAFileInItsPlaceIsNotFollowed) {
  const TemporaryFolder trap;
  const std::string name = std::filesystem::path(expected).filename().string();
  parent.link(name, trap.path());
  expectAnotherFolder();
  parent.link(name, parent.path("missing"));
  expectAnotherFolder();
  parent.remove(name);
  parent.write(name, "a file");
  expectAnotherFolder();
  EXPECT_TRUE(std::filesystem::is_empty(trap.path()));
}

TEST_F(PrivateFolder, OneThatAnotherUserHasMadeIsNotTaken) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  constexpr uid_t nobody = 65534;
  ASSERT_EQ(::chmod(parent.path().c_str(), 01777), 0);
  const std::string squatted = parent.folderAt("korvantis-65534");
  ASSERT_EQ(::chmod(squatted.c_str(), 0700), 0);

  const std::string made = ChildProcess::answerOf([&] {
    if (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
        ::setresuid(nobody, nobody, nobody) != 0) {
      return std::string("still privileged");
    }
    return privateFolder(parent.path());
  });

  EXPECT_THAT(made, MatchesRegex(squatted + "-......"));
  EXPECT_EQ(modeOf(made), 0700U);
}

TEST_F(PrivateFolder, WhereNothingCanBeMadeThereIsNone) {
  EXPECT_EQ(privateFolder(parent.path("missing")), "");
}

}  // namespace
}  // namespace korvantis
