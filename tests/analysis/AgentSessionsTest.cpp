#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/AgentScannerFixture.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class AgentSessions : public test::AgentScannerFixture {
 protected:
  AgentState stateOf(double cpuPercent, const std::vector<double>& children = {}) {
    std::vector<ProcessSample> processes{processNamed(10, "claude", cpuPercent)};
    for (const double child : children) processes.push_back(processNamed(11, "sh", child, 10));
    return scan(processes).sessions.at(0).state;
  }

  std::vector<std::int32_t> pidsOf(const std::vector<ProcessSample>& processes) {
    std::vector<std::int32_t> pids;
    for (const AgentSession& session : scan(processes).sessions) pids.push_back(session.pid);
    return pids;
  }
};

TEST_F(AgentSessions, NoProcessesAndNoAgentsGiveNoSessions) {
  EXPECT_THAT(scan().sessions, IsEmpty());
  EXPECT_THAT(scan({processNamed(10, "bash"), processNamed(11, "vim")}).sessions, IsEmpty());
}

TEST_F(AgentSessions, SessionHasTheProcessesFacts) {
  ProcessSample agent = processNamed(10, "codex", 2);
  agent.projectPath = "/code/shop";
  agent.workingDirectory = "/code/shop/src";
  agent.memoryBytes = 100;
  agent.startedAt = Instant{1234};
  ProcessSample child = processNamed(11, "rg", 1, 10);
  child.memoryBytes = 50;
  const AgentSession expected{.pid = 10,
                              .toolName = "Codex CLI",
                              .state = AgentState::working,
                              .projectName = "shop",
                              .projectPath = "/code/shop",
                              .cpuPercent = 3,
                              .memoryBytes = 150,
                              .tokensToday = 96400,
                              .tokensWeek = 680000,
                              .childProcesses = {"rg"},
                              .startedAt = Instant{1234}};
  EXPECT_THAT(scan({agent, child}).sessions, ElementsAre(expected));
}

TEST_F(AgentSessions, StateByLoadWithoutChildren) {
  EXPECT_EQ(stateOf(3.5), AgentState::working);
  EXPECT_EQ(stateOf(3.4), AgentState::waitingForApproval);
  EXPECT_EQ(stateOf(3.49), AgentState::waitingForApproval);
  EXPECT_EQ(stateOf(0.4), AgentState::waitingForApproval);
  EXPECT_EQ(stateOf(0.39), AgentState::idle);
  EXPECT_EQ(stateOf(0.3), AgentState::idle);
  EXPECT_EQ(stateOf(0), AgentState::idle);
}

TEST_F(AgentSessions, AnyChildMakesItWork) {
  EXPECT_EQ(stateOf(3.4, {0}), AgentState::working);
  EXPECT_EQ(stateOf(0.3, {0}), AgentState::working);
  EXPECT_EQ(stateOf(0, {0}), AgentState::working);
}

TEST_F(AgentSessions, LoadOfChildrenCounts) {
  EXPECT_EQ(stateOf(2.0, {2.0}), AgentState::working);
  EXPECT_EQ(
      scan({processNamed(10, "claude", 2), processNamed(11, "sh", 2, 10)}).sessions[0].cpuPercent,
      4);
}

TEST_F(AgentSessions, OnlyDirectChildrenCount) {
  const AgentSession session =
      scan({processNamed(12, "grandchild", 50, 11), processNamed(10, "claude", 1),
            processNamed(11, "child", 2, 10), processNamed(13, "stranger", 70, 9)})
          .sessions.at(0);
  EXPECT_EQ(session.cpuPercent, 3);
  EXPECT_THAT(session.childProcesses, ElementsAre("child"));
}

TEST_F(AgentSessions, WhatThePidsZeroAndOneStartedAreNobodysChildren) {
  for (const std::int32_t pid : {0, 1}) {
    const AgentSession session =
        scan({processNamed(pid, "claude", 1, 0), processNamed(10, "sh", 1, pid)}).sessions.at(0);
    EXPECT_THAT(session.childProcesses, IsEmpty()) << pid;
    EXPECT_EQ(session.cpuPercent, 1) << pid;
  }
  EXPECT_THAT(
      scan({processNamed(2, "claude"), processNamed(10, "sh", 0, 2)}).sessions[0].childProcesses,
      ElementsAre("sh"));
}

TEST_F(AgentSessions, FiveChildrenAreAllNamedAndOfSixTheFirstFive) {
  std::vector<ProcessSample> processes{processNamed(10, "claude", 1)};
  for (const std::string name : {"a", "b", "c", "d", "e"}) {
    processes.push_back(processNamed(20, name, 1, 10));
  }
  EXPECT_THAT(scan(processes).sessions[0].childProcesses, ElementsAre("a", "b", "c", "d", "e"));
  processes.push_back(processNamed(20, "f", 1, 10));
  const AgentSession session = scan(processes).sessions[0];
  EXPECT_THAT(session.childProcesses, ElementsAre("a", "b", "c", "d", "e"));
  EXPECT_EQ(session.cpuPercent, 7);
}

TEST_F(AgentSessions, AgentThatAnotherStartedIsChildAndSessionAlike) {
  const auto sessions =
      scan({processNamed(10, "claude", 1), processNamed(11, "claude", 2, 10)}).sessions;
  ASSERT_THAT(sessions, SizeIs(2));
  EXPECT_EQ(sessions[0].pid, 10);
  EXPECT_EQ(sessions[0].cpuPercent, 3);
  EXPECT_EQ(sessions[1].pid, 11);
  EXPECT_EQ(sessions[1].cpuPercent, 2);
}

TEST_F(AgentSessions, PlaceIsTheProjectElseTheWorkingDirectoryElseTheHomeFolder) {
  ProcessSample agent = processNamed(10, "aider");
  AgentSession session = scan({agent}).sessions.at(0);
  EXPECT_EQ(session.projectPath, "/home/ada");
  EXPECT_EQ(session.projectName, "ada");
  agent.workingDirectory = "/opt/notes";
  session = scan({agent}).sessions.at(0);
  EXPECT_EQ(session.projectPath, "/opt/notes");
  EXPECT_EQ(session.projectName, "notes");
  agent.projectPath = "/code/shop";
  session = scan({agent}).sessions.at(0);
  EXPECT_EQ(session.projectPath, "/code/shop");
  EXPECT_EQ(session.projectName, "shop");
}

TEST_F(AgentSessions, HomeFolderThatIsNoTextIsShownRepaired) {
  files.home = "/home/\xFF";
  const AgentSession session = scan({processNamed(10, "claude")}).sessions.at(0);
  EXPECT_EQ(session.projectPath, "/home/\uFFFD");
  EXPECT_EQ(session.projectName, "\uFFFD");
}

TEST_F(AgentSessions, TwoCursorsInOneProjectAreOneSessionThatOfTheFirst) {
  std::vector<ProcessSample> processes{processNamed(10, "Cursor"), processNamed(11, "Cursor", 9),
                                       processNamed(12, "Cursor")};
  processes[0].projectPath = "/code/shop";
  processes[1].projectPath = "/code/shop";
  processes[2].projectPath = "/code/blog";
  EXPECT_THAT(pidsOf(processes), ElementsAre(10, 12));
}

TEST_F(AgentSessions, CursorInAFolderWithoutAProjectIsKnownByThatFolder) {
  std::vector<ProcessSample> processes{processNamed(10, "Cursor"), processNamed(11, "Cursor"),
                                       processNamed(12, "Cursor")};
  processes[0].workingDirectory = "/code/shop";
  processes[1].projectPath = "/code/shop";
  processes[2].workingDirectory = "/code/shop/src";
  EXPECT_THAT(pidsOf(processes), ElementsAre(10, 12));
}

TEST_F(AgentSessions, CursorsWithoutAPlaceAreOneSessionInTheHomeFolder) {
  const std::vector<ProcessSample> processes{processNamed(10, "Cursor"),
                                             processNamed(11, "Cursor")};
  const auto sessions = scan(processes).sessions;
  ASSERT_THAT(sessions, SizeIs(1));
  EXPECT_EQ(sessions[0].pid, 10);
  EXPECT_EQ(sessions[0].projectPath, "/home/ada");
}

TEST_F(AgentSessions, EveryOtherToolIsOneSessionForEachProcess) {
  for (const std::string name : {"claude", "codex", "gemini", "aider", "opencode"}) {
    std::vector<ProcessSample> processes{processNamed(10, name), processNamed(11, name)};
    processes[0].projectPath = "/code/shop";
    processes[1].projectPath = "/code/shop";
    EXPECT_THAT(pidsOf(processes), ElementsAre(10, 11)) << name;
  }
}

TEST_F(AgentSessions, OtherToolInTheSamePlaceDoesNotHideACursor) {
  std::vector<ProcessSample> processes{processNamed(10, "claude"), processNamed(11, "cursor")};
  EXPECT_THAT(pidsOf(processes), ElementsAre(10, 11));
}

TEST_F(AgentSessions, BusiestStandsFirstAndEqualsAsTheyCame) {
  EXPECT_THAT(pidsOf({processNamed(10, "claude", 1), processNamed(11, "codex", 5),
                      processNamed(12, "aider", 1), processNamed(13, "gemini", 5),
                      processNamed(14, "sh", 9, 12)}),
              ElementsAre(12, 11, 13, 10));
}

TEST_F(AgentSessions, AllToolsButCodexShowClaudesTokens) {
  for (const std::string name : {"claude", "gemini", "cursor", "aider", "opencode"}) {
    const AgentSession session = scan({processNamed(10, name)}).sessions.at(0);
    EXPECT_EQ(session.tokensToday, 184200) << name;
    EXPECT_EQ(session.tokensWeek, 1420500) << name;
  }
  const AgentSession codex = scan({processNamed(10, "codex")}).sessions.at(0);
  EXPECT_EQ(codex.tokensToday, 96400);
  EXPECT_EQ(codex.tokensWeek, 680000);
}

TEST_F(AgentSessions, AProcessThatChangesItsTextsIsJudgedAnewAtEachTick) {
  ProcessSample process = processNamed(10, "node");
  EXPECT_TRUE(scan({process}).sessions.empty());
  process.arguments = "node /opt/claude/cli.js";
  EXPECT_EQ(scan({process}).sessions.at(0).toolName, "Claude Code");
  process.arguments = "node /opt/codex/cli.js";
  EXPECT_EQ(scan({process}).sessions.at(0).toolName, "Codex CLI");
  process.arguments = "";
  process.executablePath = "/x/Cursor.app/Contents/MacOS/Cursor";
  EXPECT_EQ(scan({process}).sessions.at(0).toolName, "Cursor");
  process.helperRole = HelperRole::renderer;
  EXPECT_TRUE(scan({process}).sessions.empty());
}

}  // namespace
}  // namespace korvantis
