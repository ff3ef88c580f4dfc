#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
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
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

std::optional<DirectoryEnumerator> walkOver(const std::string& path) {
  return systemFileManagerCalls().enumeratorAtPath(path);
}

/// All that a walk over the folder gives, in its order.
std::vector<std::string> walked(const std::string& path) {
  std::vector<std::string> entries;
  const auto walk = walkOver(path);
  if (!walk) return {"no walk"};
  for (auto entry = (*walk)(); entry; entry = (*walk)()) entries.push_back(*entry);
  return entries;
}

/// The descriptors that this process has open.
std::ptrdiff_t openDescriptors() {
  const std::filesystem::directory_iterator folder("/proc/self/fd");
  return std::distance(begin(folder), end(folder));
}

TEST(FolderWalk, GivesEveryEntryOnceByItsPathBelowTheFolder) {
  const TemporaryFolder files;
  files.write("a.txt", "");
  files.write("shop/b.txt", "");
  files.write("shop/deep/.hidden", "");
  files.folderAt("empty");
  EXPECT_THAT(walked(files.path()), UnorderedElementsAre("a.txt", "shop", "shop/b.txt", "shop/deep",
                                                         "shop/deep/.hidden", "empty"));
}

TEST(FolderWalk, FolderStandsBeforeWhatItHolds) {
  const TemporaryFolder files;
  for (const std::string folder : {"a", "b/c", "b/d/e"}) files.write(folder + "/file", "");
  std::set<std::string> seen{""};
  for (const std::string& entry : walked(files.path())) {
    const std::size_t slash = entry.rfind('/');
    EXPECT_TRUE(seen.contains(slash == std::string::npos ? "" : entry.substr(0, slash))) << entry;
    seen.insert(entry);
  }
  EXPECT_EQ(seen.size(), 9U);
}

TEST(FolderWalk, EndStaysTheEnd) {
  const TemporaryFolder files;
  files.write("a", "");
  const auto walk = walkOver(files.path());
  ASSERT_TRUE(walk);
  EXPECT_EQ((*walk)(), "a");
  EXPECT_EQ((*walk)(), std::nullopt);
  EXPECT_EQ((*walk)(), std::nullopt);
}

TEST(FolderWalk, EmptyFolderGivesNothing) {
  const TemporaryFolder files;
  EXPECT_THAT(walked(files.path()), IsEmpty());
}

TEST(FolderWalk, SlashesAtTheEndChangeNothing) {
  const TemporaryFolder files;
  files.write("a/b", "");
  EXPECT_THAT(walked(files.path() + "//"), ElementsAre("a", "a/b"));
}

TEST(FolderWalk, WhatIsNoFolderHasNoWalk) {
  const TemporaryFolder files;
  const std::string file = files.write("file", "text");
  files.link("nowhere", "missing");
  files.link("toFile", "file");
  EXPECT_FALSE(walkOver(files.path("missing")));
  EXPECT_FALSE(walkOver(file));
  EXPECT_FALSE(walkOver(files.path("nowhere")));
  EXPECT_FALSE(walkOver(files.path("toFile")));
  EXPECT_FALSE(walkOver(""));
  EXPECT_FALSE(walkOver("/dev/null"));
  EXPECT_FALSE(walkOver(files.path() + std::string("\0x", 2)));
}

TEST(FolderWalk, PipeHasNoWalkAndBlocksNobody) {
  const TemporaryFolder files;
  ASSERT_EQ(::mkfifo(files.path("pipe.jsonl").c_str(), 0600), 0);
  EXPECT_FALSE(walkOver(files.path("pipe.jsonl")));
  EXPECT_THAT(walked(files.path()), ElementsAre("pipe.jsonl"));
}

TEST(FolderWalk, LinkToAFolderIsWalkedWhenItIsTheFolderAskedFor) {
  const TemporaryFolder files;
  files.write("real/log", "");
  files.link("link", "real");
  EXPECT_THAT(walked(files.path("link")), ElementsAre("log"));
}

TEST(FolderWalk, LinksInCirclesAreEntriesAndNotFollowed) {
  const TemporaryFolder files;
  files.write("a/file", "");
  files.link("a/up", "..");
  files.link("a/self", "self");
  files.link("whole", files.path());
  EXPECT_THAT(walked(files.path()), UnorderedElementsAre("a", "a/file", "a/up", "a/self", "whole"));
}

TEST(FolderWalk, FolderNamedLikeALogIsWalkedAsAnyOther) {
  const TemporaryFolder files;
  files.write("a.jsonl/b.jsonl", "");
  EXPECT_THAT(walked(files.path()), ElementsAre("a.jsonl", "a.jsonl/b.jsonl"));
}

TEST(FolderWalk, NamesThatAreNoTextComeAsTheirBytes) {
  const TemporaryFolder files;
  files.write("caf\xE9/\xFF.jsonl", "1234");
  const auto entries = walked(files.path());
  EXPECT_THAT(entries, ElementsAre("caf\xE9", "caf\xE9/\xFF.jsonl"));
  EXPECT_EQ(systemFileManagerCalls().fileSize(files.path(entries.at(1))), 4U);
}

TEST(FolderWalk, HundredThousandFilesAreGivenWithOneFolderOpenAtATime) {
  const TemporaryFolder files;
  constexpr int folders = 100;
  constexpr int filesOfEach = 999;
  for (int folder = 0; folder < folders; ++folder) {
    const std::string path = files.folderAt(std::to_string(folder));
    for (int file = 0; file < filesOfEach; ++file) {
      const int made =
          ::open((path + "/" + std::to_string(file)).c_str(), O_CREAT | O_WRONLY, 0600);
      ASSERT_GE(made, 0);
      ::close(made);
    }
  }
  const auto before = openDescriptors();
  const auto walk = walkOver(files.path());
  ASSERT_TRUE(walk);
  std::set<std::string> seen;
  std::ptrdiff_t mostOpen = 0;
  for (auto entry = (*walk)(); entry; entry = (*walk)()) {
    seen.insert(*entry);
    if (seen.size() % 5000 == 0) mostOpen = std::max(mostOpen, openDescriptors());
  }
  EXPECT_EQ(seen.size(), 100'000U);
  EXPECT_LE(mostOpen, before + 1);
  EXPECT_EQ(openDescriptors(), before);
}

TEST(FolderWalk, DeepTreeIsWalkedWithFewDescriptors) {
  const TemporaryFolder files;
  constexpr int depth = 200;
  std::string path;
  for (int level = 0; level < depth; ++level) path += "d/";
  files.write(path + "bottom", "");
  const std::string answer = ChildProcess::answerOf([&] {
    const rlimit few{16, 16};
    if (::setrlimit(RLIMIT_NOFILE, &few) != 0) return std::string("no limit");
    const auto entries = walked(files.path());
    return std::to_string(entries.size()) + " " + entries.back().substr(2 * (depth - 1));
  });
  EXPECT_EQ(answer, "201 d/bottom");
}

TEST(FolderWalk, BranchTooDeepForAPathIsLeftAndTheRestWalked) {
  const TemporaryFolder files;
  files.write("near", "");
  // Longer than any path may be; made step by step, as somebody else's program would.
  const std::string answer = ChildProcess::answerOf([&] {
    const std::string name(200, 'x');
    if (::chdir(files.path().c_str()) != 0) return std::string("no folder");
    for (int level = 0; level < 30; ++level) {
      if (::mkdir(name.c_str(), 0700) != 0 || ::chdir(name.c_str()) != 0)
        return std::string("none");
    }
    const auto entries = walked(files.path());
    return std::to_string(std::count(entries.begin(), entries.end(), "near")) + " " +
           std::to_string(entries.size() > 15 && entries.size() < 31);
  });
  EXPECT_EQ(answer, "1 1");
}

TEST(FolderWalk, FolderThatVanishesDuringTheWalkIsPassedOver) {
  const TemporaryFolder files;
  for (const std::string folder : {"a", "b", "c"}) files.write(folder + "/file", "");
  const auto walk = walkOver(files.path());
  ASSERT_TRUE(walk);
  std::set<std::string> seen;
  for (int top = 0; top < 3; ++top) seen.insert(*(*walk)());
  EXPECT_EQ(seen, (std::set<std::string>{"a", "b", "c"}));
  files.remove("b");
  std::set<std::string> rest;
  for (auto entry = (*walk)(); entry; entry = (*walk)()) rest.insert(*entry);
  EXPECT_EQ(rest, (std::set<std::string>{"a/file", "c/file"}));
}

TEST(FolderWalk, FolderThatVanishesWhileItIsListedEndsItsPart) {
  const TemporaryFolder files;
  files.write("a/file", "");
  const auto walk = walkOver(files.path());
  ASSERT_TRUE(walk);
  EXPECT_EQ((*walk)(), "a");
  EXPECT_EQ((*walk)(), "a/file");
  files.remove("a");
  EXPECT_EQ((*walk)(), std::nullopt);
}

TEST(FolderWalk, LinkThatTookAFoldersPlaceIsNotFollowed) {
  const TemporaryFolder files;
  files.write("outside/secret", "");
  files.write("tree/a/file", "");
  const auto walk = walkOver(files.path("tree"));
  ASSERT_TRUE(walk);
  EXPECT_EQ((*walk)(), "a");
  files.remove("tree/a");
  files.link("tree/a", files.path("outside"));
  EXPECT_EQ((*walk)(), std::nullopt);
}

TEST(FolderWalk, CopyOfAWalkGoesOnWithIt) {
  const TemporaryFolder files;
  files.write("a", "");
  files.write("b", "");
  const auto walk = walkOver(files.path());
  ASSERT_TRUE(walk);
  const DirectoryEnumerator copy = *walk;
  std::set<std::string> seen{*(*walk)(), *copy()};
  EXPECT_EQ(seen, (std::set<std::string>{"a", "b"}));
  EXPECT_EQ((*walk)(), std::nullopt);
}

TEST(FolderWalk, UnreadableFoldersArePassedOverAndAnUnreadableTopHasNoWalk) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  const TemporaryFolder files;
  files.write("open/file", "");
  files.write("closed/file", "");
  files.write("listOnly/file", "1234");
  ASSERT_EQ(::chmod(files.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(files.path("closed").c_str(), 0700), 0);
  ASSERT_EQ(::chmod(files.path("listOnly").c_str(), 0744), 0);
  const std::string answer = ChildProcess::answerOf([&] {
    constexpr uid_t nobody = 65534;
    if (::setgroups(0, nullptr) != 0 || ::setresuid(nobody, nobody, nobody) != 0) {
      return std::string("still privileged");
    }
    auto entries = walked(files.path());
    std::sort(entries.begin(), entries.end());
    std::ostringstream text;
    for (const std::string& entry : entries) text << entry << " ";
    text << walkOver(files.path("closed")).has_value();
    // Its names can be listed, but nothing can be told of them.
    text << systemFileManagerCalls().fileSize(files.path("listOnly/file")).has_value();
    return text.str();
  });
  EXPECT_EQ(answer, "closed listOnly listOnly/file open open/file 00");
}

}  // namespace
}  // namespace korvantis
