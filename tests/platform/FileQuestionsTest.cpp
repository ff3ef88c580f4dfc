#include <filesystem>
#include <grp.h>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/FileManagerCalls.h"
#include "platform/linux/FileDescriptor.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::TemporaryFolder;

bool exists(const std::string& path) {
  return systemFileManagerCalls().fileExistsAtPath(path);
}

std::optional<std::uint64_t> size(const std::string& path) {
  return systemFileManagerCalls().fileSize(path);
}

TEST(FileQuestions, FilesFoldersPipesAndDevicesExist) {
  const TemporaryFolder files;
  EXPECT_TRUE(exists(files.path()));
  EXPECT_TRUE(exists(files.path() + "/"));
  EXPECT_TRUE(exists(files.write("empty", "")));
  ASSERT_EQ(::mkfifo(files.path("pipe").c_str(), 0600), 0);
  EXPECT_TRUE(exists(files.path("pipe")));
  EXPECT_TRUE(exists("/dev/null"));
  EXPECT_TRUE(exists("/"));
}

TEST(FileQuestions, WhatIsNotThereDoesNotExist) {
  const TemporaryFolder files;
  files.write("file", "");
  EXPECT_FALSE(exists(""));
  EXPECT_FALSE(exists(files.path("missing")));
  EXPECT_FALSE(exists(files.path("missing/file")));
  EXPECT_FALSE(exists(files.path("file/below")));
  EXPECT_FALSE(exists(files.path(std::string(300, 'x'))));
  EXPECT_FALSE(exists("/" + std::string(5000, 'x')));
}

TEST(FileQuestions, LinkCountsByWhatItPointsTo) {
  const TemporaryFolder files;
  files.write("file", "");
  files.link("good", "file");
  files.link("broken", "missing");
  files.link("circle", "circle");
  EXPECT_TRUE(exists(files.path("good")));
  EXPECT_FALSE(exists(files.path("broken")));
  EXPECT_FALSE(exists(files.path("circle")));
}

TEST(FileQuestions, NamesThatAreNoTextExist) {
  const TemporaryFolder files;
  EXPECT_TRUE(exists(files.write("\xFF", "")));
  EXPECT_FALSE(exists(files.path("\uFFFD")));
}

TEST(FileQuestions, PathWithAZeroByteNamesNothing) {
  const TemporaryFolder files;
  const std::string path = files.write("file", "1234") + std::string("\0x", 2);
  EXPECT_FALSE(exists(path));
  EXPECT_EQ(size(path), std::nullopt);
}

TEST(FileQuestions, SizeIsThatOfTheFile) {
  const TemporaryFolder files;
  EXPECT_EQ(size(files.write("empty", "")), 0U);
  EXPECT_EQ(size(files.write("log.jsonl", std::string(12345, 'x'))), 12345U);
}

TEST(FileQuestions, SizeOfAFileBeyondFourGigabytesIsWhole) {
  const TemporaryFolder files;
  const std::string path = files.write("sparse", "");
  const std::uint64_t bytes = std::uint64_t{5} << 30;
  std::filesystem::resize_file(path, bytes);
  EXPECT_EQ(size(path), bytes);
}

TEST(FileQuestions, SizeOfALinkIsItsOwn) {
  const TemporaryFolder files;
  files.write("file", std::string(1000, 'x'));
  files.link("good", "file");
  files.link("broken", "missing");
  EXPECT_EQ(size(files.path("good")), 4U);
  EXPECT_EQ(size(files.path("broken")), 7U);
}

TEST(FileQuestions, FolderPipeSocketAndDeviceHaveNoSizeAndBlockNobody) {
  const TemporaryFolder files;
  EXPECT_EQ(size(files.folderAt("folder.jsonl")), std::nullopt);
  ASSERT_EQ(::mkfifo(files.path("pipe.jsonl").c_str(), 0600), 0);
  EXPECT_EQ(size(files.path("pipe.jsonl")), std::nullopt);
  EXPECT_EQ(size("/dev/null"), std::nullopt);
  const FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  files.path("s").copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(socket.number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_TRUE(exists(files.path("s")));
  EXPECT_EQ(size(files.path("s")), std::nullopt);
}

TEST(FileQuestions, WhatIsNotThereHasNoSize) {
  const TemporaryFolder files;
  EXPECT_EQ(size(""), std::nullopt);
  EXPECT_EQ(size(files.path("missing")), std::nullopt);
}

TEST(FileQuestions, FilesInAClosedFolderDontExistForOthersAndUnreadableFilesDo) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  const TemporaryFolder files;
  files.write("closed/.git", "x");
  files.write("secret", "1234");
  ASSERT_EQ(::chmod(files.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(files.path("closed").c_str(), 0700), 0);
  ASSERT_EQ(::chmod(files.path("secret").c_str(), 0600), 0);
  const std::string answer = ChildProcess::answerOf([&] {
    constexpr uid_t nobody = 65534;
    if (::setgroups(0, nullptr) != 0 || ::setresuid(nobody, nobody, nobody) != 0) {
      return std::string("still privileged");
    }
    return std::to_string(exists(files.path("closed"))) +
           std::to_string(exists(files.path("closed/.git"))) +
           std::to_string(size(files.path("closed/.git")).value_or(99)) + " " +
           std::to_string(exists(files.path("secret"))) +
           std::to_string(size(files.path("secret")).value_or(99));
  });
  EXPECT_EQ(answer, "1099 14");
}

}  // namespace
}  // namespace korvantis
