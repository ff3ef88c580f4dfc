#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/FileManagerCalls.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::TemporaryFolder;
using ::testing::ElementsAre;

mode_t modeOf(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 ? facts.st_mode & 07777U : 0;
}

class FileManager : public testing::Test {
 protected:
  TemporaryFolder folder;
  FileManagerCalls files = systemFileManagerCalls();

  std::string bytesOf(const std::string& relative) const {
    std::ifstream stream(folder.path(relative), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::vector<std::string> names() const {
    std::vector<std::string> list;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      list.push_back(entry.path().filename().string());
    }
    std::ranges::sort(list);
    return list;
  }
};

TEST_F(FileManager, MakesAFolderAndWhatIsMissingAboveForThisUserAlone) {
  EXPECT_TRUE(files.createDirectory(folder.path("a/b/c")));
  for (const char* made : {"a", "a/b", "a/b/c"}) EXPECT_EQ(modeOf(folder.path(made)), 0700U);
}

TEST_F(FileManager, AFolderThatIsThereStaysAsItIs) {
  folder.folderAt("a");
  ASSERT_EQ(::chmod(folder.path("a").c_str(), 0755), 0);
  EXPECT_TRUE(files.createDirectory(folder.path("a")));
  EXPECT_EQ(modeOf(folder.path("a")), 0755U);
  EXPECT_TRUE(files.createDirectory("/"));
}

TEST_F(FileManager, SlashesAtTheEndAndTwiceDoNoHarm) {
  EXPECT_TRUE(files.createDirectory(folder.path("a//b/")));
  EXPECT_TRUE(std::filesystem::is_directory(folder.path("a/b")));
}

TEST_F(FileManager, ALinkToAFolderCountsAsOne) {
  folder.folderAt("real");
  folder.link("linked", folder.path("real"));
  EXPECT_TRUE(files.createDirectory(folder.path("linked")));
  EXPECT_TRUE(files.createDirectory(folder.path("linked/inside")));
  EXPECT_TRUE(std::filesystem::is_directory(folder.path("real/inside")));
}

TEST_F(FileManager, WhatCanNotBeAFolderIsNotMade) {
  folder.write("file", "x");
  folder.link("dangling", folder.path("missing"));
  EXPECT_FALSE(files.createDirectory(""));
  EXPECT_FALSE(files.createDirectory(folder.path("file")));
  EXPECT_FALSE(files.createDirectory(folder.path("file/below")));
  EXPECT_FALSE(files.createDirectory(folder.path("dangling")));
  EXPECT_FALSE(files.createDirectory(folder.path(std::string(300, 'x'))));
  EXPECT_FALSE(files.createDirectory(folder.path(std::string("a\0b", 3))));
  EXPECT_FALSE(files.createDirectory("/proc/korvantis"));
  EXPECT_THAT(names(), ElementsAre("dangling", "file"));
}

TEST_F(FileManager, WritesANewFileWhole) {
  const std::string bytes = std::string("zero \0 byte", 11) + std::string(3'000'000, 'x');
  EXPECT_TRUE(files.writeAtomically(folder.path("new"), bytes));
  EXPECT_EQ(bytesOf("new"), bytes);
  EXPECT_THAT(names(), ElementsAre("new")) << "nothing temporary is left";
}

TEST_F(FileManager, ANewFileHasThePermissionsOfTheUsersOwn) {
  const mode_t mask = ::umask(027);
  EXPECT_TRUE(files.writeAtomically(folder.path("new"), "x"));
  ::umask(mask);
  EXPECT_EQ(modeOf(folder.path("new")), 0640U);
}

TEST_F(FileManager, AnOldFileIsReplacedAndLeavesItsPermissions) {
  folder.write("old", std::string(1000, 'x'));
  ASSERT_EQ(::chmod(folder.path("old").c_str(), 0600), 0);
  EXPECT_TRUE(files.writeAtomically(folder.path("old"), ""));
  EXPECT_EQ(bytesOf("old"), "");
  EXPECT_EQ(modeOf(folder.path("old")), 0600U);
}

TEST_F(FileManager, WhoHasTheOldFileOpenKeepsItsBytes) {
  folder.write("old", "before");
  std::ifstream reader(folder.path("old"));
  EXPECT_TRUE(files.writeAtomically(folder.path("old"), "after"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "before");
}

TEST_F(FileManager, ALinkInTheFilesPlaceIsReplacedNotFollowed) {
  folder.write("elsewhere", "kept");
  folder.link("linked", folder.path("elsewhere"));
  EXPECT_TRUE(files.writeAtomically(folder.path("linked"), "new"));
  EXPECT_EQ(bytesOf("elsewhere"), "kept");
  EXPECT_TRUE(
      std::filesystem::is_regular_file(std::filesystem::symlink_status(folder.path("linked"))));
}

TEST_F(FileManager, WhatCanNotBeWrittenLeavesEverythingAsItWas) {
  folder.folderAt("taken/inside");
  EXPECT_FALSE(files.writeAtomically(folder.path("taken"), "x"));
  EXPECT_FALSE(files.writeAtomically(folder.path("missing/file"), "x"));
  EXPECT_FALSE(files.writeAtomically("", "x"));
  EXPECT_FALSE(files.writeAtomically(folder.path(std::string("a\0b", 3)), "x"));
  EXPECT_THAT(names(), ElementsAre("taken"));
}

TEST_F(FileManager, AWriteThatStopsHalfWayLeavesTheOldFile) {
  folder.write("old", "before");
  const std::string answer = ChildProcess::answerOf([this] {
    // No file may grow beyond this; the system's way of a full disk.
    const rlimit limit{.rlim_cur = 100'000, .rlim_max = 100'000};
    ::signal(SIGXFSZ, SIG_IGN);
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return "no limit";
    return files.writeAtomically(folder.path("old"), std::string(1'000'000, 'x')) ? "written"
                                                                                  : "refused";
  });
  EXPECT_EQ(answer, "refused");
  EXPECT_EQ(bytesOf("old"), "before");
  EXPECT_THAT(names(), ElementsAre("old"));
}

TEST_F(FileManager, WhatAKilledProgramLeftBehindIsInNobodysWay) {
  for (int number = 0; number < 200; ++number) {
    folder.write(".korvantis-" + std::to_string(::getpid()) + "-" + std::to_string(number), "");
  }
  EXPECT_TRUE(files.writeAtomically(folder.path("new"), "x"));
  EXPECT_EQ(bytesOf("new"), "x");
  EXPECT_EQ(names().size(), 201U);
}

TEST_F(FileManager, ConcurrentWritersLeaveOneWholeFile) {
  const auto write = [this](char letter) {
    for (int time = 0; time < 20; ++time) {
      EXPECT_TRUE(files.writeAtomically(folder.path("shared"), std::string(100'000, letter)));
    }
  };
  std::thread first(write, 'a');
  std::thread second(write, 'b');
  first.join();
  second.join();
  const std::string bytes = bytesOf("shared");
  EXPECT_EQ(bytes.size(), 100'000U);
  EXPECT_EQ(std::ranges::count(bytes, bytes.front()), 100'000);
  EXPECT_THAT(names(), ElementsAre("shared"));
}

}  // namespace
}  // namespace korvantis
