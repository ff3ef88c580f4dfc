#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "samplers/StaticProcInfo.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

using test::argumentBlock;
using test::ProcessOperation;
using test::ScriptedProcess;
using test::ScriptedProcesses;

class StaticProcInfo : public testing::Test {
 protected:
  CachedStaticProcInfo read(const ScriptedProcess& process, bool isOwn = true) {
    processes.add(process);
    const PlatformCalls platform = processes.platform();
    return readStaticProcInfo(platform.libProc, platform.sysctl,
                              {.pid = process.pid, .name = "short", .isOwn = isOwn, .now = 42});
  }
  void TearDown() override { EXPECT_EQ(processes.complaints(), std::vector<std::string>{}); }

  ScriptedProcesses processes;
};

TEST_F(StaticProcInfo, AllFactsOfAnOwnProcess) {
  const CachedStaticProcInfo facts = read({.pid = 7,
                                           .path = "/bin/tool",
                                           .workingDirectory = "/home/me",
                                           .responsiblePID = 3,
                                           .argumentBlock = argumentBlock(1, "/p", {"tool"})});
  EXPECT_EQ(facts, (CachedStaticProcInfo{"/bin/tool", "tool", 3, "/home/me", 42}));
}

TEST_F(StaticProcInfo, WorkingDirectoryAndArgumentsOfOthersAreNotAskedFor) {
  const CachedStaticProcInfo facts = read({.pid = 7,
                                           .path = "/bin/tool",
                                           .workingDirectory = "/home/me",
                                           .responsiblePID = 3,
                                           .argumentBlock = argumentBlock(1, "/p", {"tool"})},
                                          false);
  EXPECT_EQ(facts, (CachedStaticProcInfo{"/bin/tool", "short", 3, std::nullopt, 42}));
  EXPECT_EQ(processes.count(ProcessOperation::workingDirectory), 0);
  EXPECT_EQ(processes.count(ProcessOperation::arguments), 0);
}

TEST_F(StaticProcInfo, AnUnreadablePathIsTheEmptyText) {
  for (const int result : {0, -1}) {
    processes.setReply(ProcessOperation::path, [result](int, int) { return result; });
    EXPECT_EQ(read({.pid = 7, .path = "/bin/tool"}).executablePath, "");
  }
}

TEST_F(StaticProcInfo, ThePathGoesUpToItsFirstZeroByteWhateverTheResultSays) {
  for (const int result : {1, 4096, 1 << 20}) {
    processes.setReply(ProcessOperation::path, [result](int, int) { return result; });
    EXPECT_EQ(read({.pid = 7, .path = "/bin/tool"}).executablePath, "/bin/tool");
    EXPECT_EQ(read({.pid = 7, .path = std::string("/a\0/b", 5)}).executablePath, "/a");
    EXPECT_EQ(read({.pid = 7, .path = ""}).executablePath, "");
  }
}

TEST_F(StaticProcInfo, APathThatFillsTheWholeBufferIsTaken) {
  const std::string path(4096, 'p');
  EXPECT_EQ(read({.pid = 7, .path = path}).executablePath, path);
}

TEST_F(StaticProcInfo, BadBytesOfAPathAreRepaired) {
  EXPECT_EQ(read({.pid = 7, .path = "/bin/t\xFFool\xC3"}).executablePath,
            "/bin/t\xEF\xBF\xBDool\xEF\xBF\xBD");
}

TEST_F(StaticProcInfo, AWorkingDirectoryReplyOfAnySizeBut2352IsAbsent) {
  for (const int result : {2351, 2353, 0, -1}) {
    processes.setReply(ProcessOperation::workingDirectory, [result](int, int) { return result; });
    EXPECT_EQ(read({.pid = 7, .workingDirectory = "/home/me"}).workingDirectory, std::nullopt);
  }
}

TEST_F(StaticProcInfo, AnEmptyWorkingDirectoryIsAbsent) {
  EXPECT_EQ(read({.pid = 7}).workingDirectory, std::nullopt);
}

TEST_F(StaticProcInfo, AWorkingDirectoryThatFillsItsFieldEndsWithTheField) {
  const std::string path(1024, 'd');
  EXPECT_EQ(read({.pid = 7, .workingDirectory = path}).workingDirectory, path);
}

TEST_F(StaticProcInfo, BadBytesOfAWorkingDirectoryAreRepaired) {
  EXPECT_EQ(read({.pid = 7, .workingDirectory = "/h\xFF"}).workingDirectory, "/h\xEF\xBF\xBD");
}

TEST_F(StaticProcInfo, AResponsiblePidOfZeroOrBelowIsThePidItself) {
  for (const std::int32_t answer : {0, -1}) {
    EXPECT_EQ(read({.pid = 7, .responsiblePID = answer}).responsiblePID, 7);
  }
  EXPECT_EQ(read({.pid = 7, .responsiblePID = 1}).responsiblePID, 1);
}

TEST_F(StaticProcInfo, WithoutTheSystemsFunctionTheResponsiblePidIsThePidItself) {
  processes.add({.pid = 7, .responsiblePID = 3});
  PlatformCalls platform = processes.platform();
  platform.libProc.responsibility_get_pid_responsible_for_pid = nullptr;
  EXPECT_EQ(readStaticProcInfo(platform.libProc, platform.sysctl, {7, "short"}).responsiblePID, 7);
}

TEST_F(StaticProcInfo, ArgumentsThatCantBeReadAreTheShortName) {
  EXPECT_EQ(read({.pid = 7}).arguments, "short");
}

}  // namespace
}  // namespace korvantis
