#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "engine/ScriptedEngine.h"
#include "support/PrivateFolders.h"
#include "support/ScriptedFiles.h"
#include "support/ScriptedProcesses.h"

namespace korvantis {
namespace {

using test::ScriptedFiles;
using test::ScriptedProcess;
using test::ScriptedProcesses;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double now = 1'750'000'000;

/// A developer's machine: a server that was started long ago in one project, an agent with a child
/// in another, a tool in no project. The engine's own samplers and analysers look at it.
class OstrelEngineAttribution : public testing::Test {
 protected:
  OstrelEngineAttribution() {
    files.existing = {"/code/shop/.git", "/code/blog/Gemfile"};
    files.walks["/home/ada/.claude/projects"] = {{"a/b.jsonl", 5'400'000}};
    add({.pid = 10,
         .name = "node",
         .workingDirectory = "/code/shop/src",
         .descriptors = {{.port = 3000}}});
    add({.pid = 20, .name = "claude", .workingDirectory = "/code/blog"});
    add({.pid = 21, .ppid = 20, .name = "rg", .workingDirectory = "/code/blog/app"});
    add({.pid = 30, .name = "top", .workingDirectory = "/opt"});
    table.setNow(now);
    table.install(platform);
    platform.files = files.calls();
    test::usePrivateFolders(platform);
  }

  void add(ScriptedProcess process) {
    process.path = "/usr/bin/" + process.name;
    process.startSeconds = static_cast<std::uint64_t>(now) - 4000;
    table.add(process);
  }

  EngineSnapshot tick() { return engine().sampleTick({}, {}); }

  OstrelEngine& engine() {
    if (!made) made.emplace(platform);
    return *made;
  }

  ScriptedProcesses table;
  ScriptedFiles files;
  PlatformCalls platform = test::platformWithoutProcesses();
  std::optional<OstrelEngine> made;
};

TEST_F(OstrelEngineAttribution, TickNamesTheProjectsWithTheirPorts) {
  const EngineSnapshot snapshot = tick();
  ASSERT_THAT(snapshot.projects, SizeIs(2));
  EXPECT_EQ(snapshot.projects[0].path, "/code/shop");
  EXPECT_THAT(snapshot.projects[0].ports, ElementsAre(3000));
  EXPECT_EQ(snapshot.projects[1].path, "/code/blog");
  EXPECT_THAT(snapshot.projects[1].processes, SizeIs(2));
}

TEST_F(OstrelEngineAttribution, GroupsCarryTheProjects) {
  for (const AppGroup& group : tick().appGroups) {
    const auto expected = group.name == "top"    ? std::nullopt
                          : group.name == "node" ? std::optional<std::string>("/code/shop")
                                                 : std::optional<std::string>("/code/blog");
    EXPECT_EQ(group.processes.at(0).projectPath, expected) << group.name;
  }
}

TEST_F(OstrelEngineAttribution, TickNamesTheForgottenServerByTheSeamsClock) {
  const EngineSnapshot snapshot = tick();
  ASSERT_THAT(snapshot.idleServers, SizeIs(1));
  EXPECT_EQ(snapshot.idleServers[0].pid, 10);
  EXPECT_EQ(snapshot.idleServers[0].projectName, "shop");
  EXPECT_EQ(snapshot.idleServers[0].idleSeconds, 4000);
  ASSERT_THAT(snapshot.listeningPorts, SizeIs(1));
  EXPECT_TRUE(snapshot.listeningPorts[0].isIdle);
  EXPECT_EQ(snapshot.listeningPorts[0].appName, "node");
}

TEST_F(OstrelEngineAttribution, TickNamesTheAgentWithTheTokensOfTheLogs) {
  const EngineSnapshot snapshot = tick();
  ASSERT_THAT(snapshot.agentSessions, SizeIs(1));
  const AgentSession& session = snapshot.agentSessions[0];
  EXPECT_EQ(session.toolName, "Claude Code");
  EXPECT_EQ(session.state, AgentState::working);
  EXPECT_EQ(session.projectName, "blog");
  EXPECT_THAT(session.childProcesses, ElementsAre("rg"));
  EXPECT_EQ(session.tokensToday, 50000);
  ASSERT_THAT(snapshot.planLimits, SizeIs(2));
  EXPECT_EQ(snapshot.planLimits[0].tokensWeek, 300000);
}

/// Without the questions of the container sampler, which looks for engines at a pace of its own.
std::vector<std::string> withoutEngineQuestions(std::vector<std::string> questions) {
  std::erase_if(questions, [](const std::string& question) {
    return question == "home" || question.ends_with("/docker.sock");
  });
  return questions;
}

TEST_F(OstrelEngineAttribution, SteadyTickAsksForNoFileUntilTheLogsAreDue) {
  tick();
  EXPECT_FALSE(files.takeQuestions().empty());
  for (int seconds = 2; seconds < 30; seconds += 2) {
    table.advance(2);
    tick();
  }
  EXPECT_THAT(withoutEngineQuestions(files.takeQuestions()), IsEmpty());
  table.advance(2);
  tick();
  EXPECT_THAT(withoutEngineQuestions(files.questions()),
              ElementsAre("exists /home/ada/.claude/projects", "walk /home/ada/.claude/projects",
                          "next", "size /home/ada/.claude/projects/a/b.jsonl", "next"));
}

}  // namespace
}  // namespace korvantis
