// The analysers that ask for files, over a real file system with what people leave in it.

#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "analysis/AgentScanner.h"
#include "analysis/ProjectLocator.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::TemporaryFolder;

constexpr std::int64_t sampleTokens = 1420500;

FileManagerCalls filesWithHome(const std::string& home) {
  FileManagerCalls calls = systemFileManagerCalls();
  calls.homeDirectoryForCurrentUser = [home] { return home; };
  return calls;
}

bool becomeNobody() {
  constexpr uid_t nobody = 65534;
  return ::setgroups(0, nullptr) == 0 && ::setresuid(nobody, nobody, nobody) == 0;
}

/// A home folder with agent logs in it.
class RealFiles : public testing::Test {
 protected:
  /// The tokens of the week that a scan makes of the logs.
  std::int64_t weekTokens() const {
    AgentScanner scanner(Clock{[] { return 1'750'000'000.0; }}, filesWithHome(files.path()));
    return scanner.scanAgentsAndLimits({}).planLimits.at(0).tokensWeek;
  }

  /// Writes a log that is worth so many tokens of the week.
  void writeLog(const std::string& name, std::size_t tokens) const {
    files.write(".claude/projects/" + name, std::string(tokens * 18, '\n'));
  }

  std::optional<std::string> rootOf(const std::string& folder) const {
    ProjectLocator locator(filesWithHome("/home/nobody"));
    return locator.locateProjectRoot(files.path(folder));
  }

  TemporaryFolder files;
};

TEST_F(RealFiles, NoLogFolderLeavesTheSampleValues) {
  EXPECT_EQ(weekTokens(), sampleTokens);
  files.write(".claude/projects", "a file in the folder's place");
  EXPECT_EQ(weekTokens(), sampleTokens);
}

TEST_F(RealFiles, LogsAreSummedOverTheTreeBehindALinkToo) {
  writeLog("shop/a.jsonl", 100'000);
  writeLog("shop/deep/b.jsonl", 50'000);
  writeLog("shop/notes.txt", 50'000);
  EXPECT_EQ(weekTokens(), 150'000);
  files.folderAt("dotfiles");
  ASSERT_EQ(::rename(files.path(".claude").c_str(), files.path("dotfiles/claude").c_str()), 0);
  files.link(".claude", "dotfiles/claude");
  EXPECT_EQ(weekTokens(), 150'000);
}

TEST_F(RealFiles, FolderOrPipeNamedLikeALogIsPassedOverAndBlocksNobody) {
  writeLog("folder.jsonl/inside.jsonl", 130'000);
  ASSERT_EQ(::mkfifo(files.path(".claude/projects/pipe.jsonl").c_str(), 0600), 0);
  EXPECT_EQ(weekTokens(), 130'000);
}

TEST_F(RealFiles, PipesAndFoldersDontUseUpTheFortyLogs) {
  for (int number = 0; number < 50; ++number) {
    const std::string name = std::to_string(number);
    ASSERT_EQ(::mkfifo((files.folderAt(".claude/projects") + "/" + name + "p.jsonl").c_str(), 0600),
              0);
    files.folderAt(".claude/projects/" + name + "f.jsonl");
  }
  writeLog("z.jsonl", 130'000);
  EXPECT_EQ(weekTokens(), 130'000);
}

TEST_F(RealFiles, CirclesOfLinksAreNotFollowedAndALinkWeighsOnlyItself) {
  writeLog("a.jsonl", 130'000);
  files.link(".claude/projects/circle", ".");
  files.link(".claude/projects/up", "../..");
  // 18 bytes: one token.
  files.link(".claude/projects/b.jsonl", "./././././/a.jsonl");
  EXPECT_EQ(weekTokens(), 130'001);
}

TEST_F(RealFiles, NamesThatAreNoTextCount) {
  writeLog("caf\xE9/\xFF.jsonl", 130'000);
  EXPECT_EQ(weekTokens(), 130'000);
}

TEST_F(RealFiles, OfTwoThousandLogsFortyCount) {
  for (int number = 0; number < 2000; ++number) {
    writeLog(std::to_string(number % 20) + "/" + std::to_string(number) + ".jsonl", 4000);
  }
  EXPECT_EQ(weekTokens(), 160'000);
}

TEST_F(RealFiles, ClosedFoldersAreLeftOut) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  writeLog("open/a.jsonl", 130'000);
  writeLog("closed/b.jsonl", 50'000);
  ASSERT_EQ(::chmod(files.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(files.path(".claude/projects/closed").c_str(), 0700), 0);
  EXPECT_EQ(weekTokens(), 180'000);
  const auto asNobody = [this] {
    return ChildProcess::answerOf([this] {
      return becomeNobody() ? std::to_string(weekTokens()) : std::string("still privileged");
    });
  };
  EXPECT_EQ(asNobody(), "130000");
  ASSERT_EQ(::chmod(files.path(".claude").c_str(), 0700), 0);
  EXPECT_EQ(asNobody(), std::to_string(sampleTokens));
}

TEST_F(RealFiles, MarkerCountsAsFileFolderPipeOrLinkThatLeadsSomewhere) {
  files.write("worktree/.git", "gitdir: elsewhere");
  files.folderAt("folder/Makefile");
  files.folderAt("pipe");
  ASSERT_EQ(::mkfifo(files.path("pipe/go.mod").c_str(), 0600), 0);
  files.link("link/Gemfile", "../worktree/.git");
  for (const std::string folder : {"worktree", "folder", "pipe", "link"}) {
    EXPECT_EQ(rootOf(folder), files.path(folder));
  }
}

TEST_F(RealFiles, MarkerThatLeadsNowhereOrInACircleCountsForNothing) {
  files.write("top/.git", "");
  files.link("top/broken/Gemfile", "missing");
  files.link("top/circle/Gemfile", "Gemfile");
  EXPECT_EQ(rootOf("top/broken"), files.path("top"));
  EXPECT_EQ(rootOf("top/circle"), files.path("top"));
}

TEST_F(RealFiles, WorkingDirectoryThatIsGoneStillBelongsToTheProjectAboveIt) {
  files.write("shop/.git/HEAD", "");
  EXPECT_EQ(rootOf("shop/build/removed"), files.path("shop"));
}

TEST_F(RealFiles, FolderThatCannotBeReadLooksLikeOneWithoutMarkers) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  files.write("shop/.git", "");
  files.write("shop/closed/.git", "");
  ASSERT_EQ(::chmod(files.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(files.path("shop/closed").c_str(), 0700), 0);
  EXPECT_EQ(rootOf("shop/closed"), files.path("shop/closed"));
  const std::string answer = ChildProcess::answerOf([this] {
    return becomeNobody() ? rootOf("shop/closed").value_or("none") : "still privileged";
  });
  EXPECT_EQ(answer, files.path("shop"));
}

TEST_F(RealFiles, PathLongerThanAnyPathMayBeHasNoRoot) {
  ProjectLocator locator(filesWithHome("/home/nobody"));
  EXPECT_EQ(locator.locateProjectRoot("/" + std::string(10000, 'x') + "/src"), std::nullopt);
}

TEST_F(RealFiles, PathWithAZeroByteHasNoRoot) {
  files.write("shop/.git", "");
  const std::string path = files.path("shop") + std::string("\0evil", 5);
  ProjectLocator locator(filesWithHome("/home/nobody"));
  EXPECT_EQ(locator.locateProjectRoot(path), std::nullopt);
}

}  // namespace
}  // namespace korvantis
