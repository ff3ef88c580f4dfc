#include <algorithm>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "analysis/AgentScannerFixture.h"

namespace korvantis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Entries = test::ScriptedFiles::Entries;

constexpr AgentTokens samples{.today = 184200, .week = 1420500};

class AgentTokensScan : public test::AgentScannerFixture {
 protected:
  void setLogs(Entries entries) { files.walks[logFolder] = std::move(entries); }

  AgentTokens tokensOfBytes(std::uint64_t bytes) {
    made.reset();
    setLogs({{"a.jsonl", bytes}});
    return tokens();
  }
};

TEST_F(AgentTokensScan, WithoutALogFolderTheSampleValuesStay) {
  EXPECT_EQ(tokens(), samples);
  EXPECT_EQ(tokens(1), (AgentTokens{.today = 96400, .week = 680000}));
  EXPECT_THAT(files.questions(), ElementsAre("home", "exists /home/ada/.claude/projects"));
}

TEST_F(AgentTokensScan, LogFolderThatCannotBeWalkedLeavesTheSampleValues) {
  files.walks[logFolder] = std::nullopt;
  EXPECT_EQ(tokens(), samples);
}

TEST_F(AgentTokensScan, NoBytesLeaveTheSampleValues) {
  setLogs({});
  EXPECT_EQ(tokens(), samples);
  made.reset();
  setLogs({{"a.jsonl", 0}, {"b.jsonl", std::nullopt}, {"c.txt", 5'000'000}});
  EXPECT_EQ(tokens(), samples);
}

TEST_F(AgentTokensScan, EstimateHasAFloorForTheDayAndOneForTheWeek) {
  EXPECT_EQ(tokensOfBytes(1), (AgentTokens{.today = 24000, .week = 120000}));
  EXPECT_EQ(tokensOfBytes(2159999), (AgentTokens{.today = 24000, .week = 120000}));
  EXPECT_EQ(tokensOfBytes(2160000), (AgentTokens{.today = 24000, .week = 120000}));
  EXPECT_EQ(tokensOfBytes(2160018), (AgentTokens{.today = 24000, .week = 120001}));
  EXPECT_EQ(tokensOfBytes(2591999), (AgentTokens{.today = 24000, .week = 143999}));
  EXPECT_EQ(tokensOfBytes(2592000), (AgentTokens{.today = 24000, .week = 144000}));
  EXPECT_EQ(tokensOfBytes(2592107), (AgentTokens{.today = 24000, .week = 144005}));
  EXPECT_EQ(tokensOfBytes(2592108), (AgentTokens{.today = 24001, .week = 144006}));
  EXPECT_EQ(tokensOfBytes(5400000), (AgentTokens{.today = 50000, .week = 300000}));
}

TEST_F(AgentTokensScan, SizesAreAddedOverTheWholeTree) {
  setLogs({{"shop", std::nullopt},
           {"shop/a.jsonl", 5'000'000},
           {"blog/deep/b.jsonl", 300'000},
           {".jsonl", 100'000}});
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
}

TEST_F(AgentTokensScan, OnlyNamesThatEndInJsonlCount) {
  setLogs({{"a.jsonl", 5'400'000},
           {"b.json", 1'000'000},
           {"c.JSONL", 1'000'000},
           {"d.jsonl.bak", 1'000'000},
           {"ejsonl", 1'000'000},
           {"f.jsonl/g", 1'000'000}});
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
  for (const std::string& question : files.questions()) {
    EXPECT_TRUE(!question.starts_with("size") || question.ends_with("/a.jsonl")) << question;
  }
}

TEST_F(AgentTokensScan, WalkStopsAfterFortyCountedLogs) {
  Entries entries;
  for (int number = 0; number < 60; ++number) {
    entries.emplace_back(std::to_string(number) + ".jsonl", 135'000);
  }
  setLogs(entries);
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
  const auto questions = files.questions();
  EXPECT_EQ(std::count(questions.begin(), questions.end(), "next"), 40);
}

TEST_F(AgentTokensScan, LogWhoseSizeCannotBeReadDoesNotCountTowardsTheForty) {
  Entries entries;
  for (int number = 0; number < 100; ++number) {
    const bool isReadable = number % 2 == 1;
    entries.emplace_back(std::to_string(number) + ".jsonl",
                         isReadable ? std::optional<std::uint64_t>(135'000) : std::nullopt);
  }
  setLogs(entries);
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
}

TEST_F(AgentTokensScan, EmptyLogsCountTowardsTheForty) {
  Entries entries(40, {"a.jsonl", 0});
  entries.emplace_back("b.jsonl", 5'400'000);
  setLogs(entries);
  EXPECT_EQ(tokens(), samples);
}

TEST_F(AgentTokensScan, LogsAreWalkedAtMostEveryThirtySeconds) {
  setLogs({{"a.jsonl", 5'400'000}});
  scan();
  files.takeQuestions();
  for (const double sinceScan : {0.0, 2.0, 29.0, 29.9}) {
    now = 1'750'000'000 + sinceScan;
    scan({processNamed(10, "claude")});
    EXPECT_THAT(files.questions(), IsEmpty()) << sinceScan;
  }
  now = 1'750'000'030;
  scan();
  EXPECT_THAT(files.takeQuestions(),
              ElementsAre("exists /home/ada/.claude/projects", "walk /home/ada/.claude/projects",
                          "next", "size /home/ada/.claude/projects/a.jsonl", "next"));
  now = 1'750'000'059.9;
  scan();
  EXPECT_THAT(files.questions(), IsEmpty());
}

TEST_F(AgentTokensScan, ScanThatFailedAlsoWaitsThirtySeconds) {
  EXPECT_EQ(tokens(), samples);
  setLogs({{"a.jsonl", 5'400'000}});
  now += 29.9;
  EXPECT_EQ(tokens(), samples);
  now = 1'750'000'030;
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
}

TEST_F(AgentTokensScan, TimeBeforeThirtySecondsOf1970WalksNothing) {
  setLogs({{"a.jsonl", 5'400'000}});
  now = 29.9;
  EXPECT_EQ(tokens(), samples);
  now = 30;
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
}

TEST_F(AgentTokensScan, ClockSetBackwardsWaitsUntilTheOldTimeIsOverAgain) {
  setLogs({{"a.jsonl", 5'400'000}});
  scan();
  files.takeQuestions();
  now -= 3600;
  scan();
  now += 3629;
  scan();
  EXPECT_THAT(files.questions(), IsEmpty());
}

TEST_F(AgentTokensScan, LogsThatVanishLeaveTheLastEstimate) {
  EXPECT_EQ(tokensOfBytes(5400000), (AgentTokens{.today = 50000, .week = 300000}));
  files.walks.clear();
  now += 30;
  EXPECT_EQ(tokens(), (AgentTokens{.today = 50000, .week = 300000}));
}

TEST_F(AgentTokensScan, EstimateReachesSessionsAndLeavesCodexAlone) {
  setLogs({{"a.jsonl", 5'400'000}});
  const auto sessions = scan({processNamed(10, "aider"), processNamed(11, "codex")}).sessions;
  EXPECT_EQ(sessions[0].tokensToday, 50000);
  EXPECT_EQ(sessions[0].tokensWeek, 300000);
  EXPECT_EQ(sessions[1].tokensToday, 96400);
  EXPECT_EQ(sessions[1].tokensWeek, 680000);
  EXPECT_EQ(tokens(1), (AgentTokens{.today = 96400, .week = 680000}));
}

TEST_F(AgentTokensScan, HomeFolderIsAskedForOnceWhenTheScannerIsMade) {
  scanner();
  EXPECT_THAT(files.takeQuestions(), ElementsAre("home"));
  for (int tick = 0; tick < 3; ++tick) {
    scan({processNamed(10, "claude")});
    now += 30;
  }
  for (const std::string& question : files.questions()) EXPECT_NE(question, "home");
}

TEST_F(AgentTokensScan, HomeFolderThatIsNoTextIsWalkedByItsOwnBytes) {
  files.home = "/home/\xFF";
  scan();
  EXPECT_THAT(files.questions(), ElementsAre("home", "exists /home/\xFF/.claude/projects"));
}

}  // namespace
}  // namespace korvantis
