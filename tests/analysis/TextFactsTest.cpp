#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "analysis/TextFacts.h"

namespace korvantis {
namespace {

/// Makes facts that say which process they were read from, and counts the readings.
class TextFactsTest : public testing::Test {
 protected:
  void tick(const std::vector<ProcessSample>& processes) {
    facts = TextFacts(processes, std::move(facts), [this](const ProcessSample& process) {
      ++readings;
      return process.name + "|" + process.executablePath + "|" + process.arguments;
    });
  }

  static ProcessSample process(std::int32_t pid, std::string name, std::string arguments = "") {
    ProcessSample made;
    made.pid = pid;
    made.name = std::move(name);
    made.executablePath = "/bin/" + made.name;
    made.arguments = std::move(arguments);
    return made;
  }

  TextFacts<std::string> facts;
  int readings = 0;
};

TEST_F(TextFactsTest, TextsThatStayTheSameAreReadOnce) {
  std::vector<ProcessSample> processes{process(10, "node", "node a.js"), process(11, "sh")};
  tick(processes);
  processes[0].cpuPercent = 50;
  processes[1].ppid = 7;
  std::swap(processes[0], processes[1]);
  tick(processes);
  EXPECT_EQ(readings, 2);
  EXPECT_EQ(facts[0], "sh|/bin/sh|");
  EXPECT_EQ(facts[1], "node|/bin/node|node a.js");
}

TEST_F(TextFactsTest, AnyTextThatChangesIsReadAnew) {
  ProcessSample changing = process(10, "a");
  tick({changing});
  changing.name = "b";
  tick({changing});
  EXPECT_EQ(facts[0], "b|/bin/a|");
  changing.executablePath = "/bin/c";
  tick({changing});
  EXPECT_EQ(facts[0], "b|/bin/c|");
  changing.arguments = "d";
  tick({changing});
  EXPECT_EQ(facts[0], "b|/bin/c|d");
  changing.helperRole = HelperRole::gpu;
  tick({changing});
  EXPECT_EQ(readings, 5);
}

TEST_F(TextFactsTest, APidThatIsUsedAgainHasFactsOfItsOwn) {
  tick({process(10, "old")});
  tick({process(10, "new")});
  EXPECT_EQ(facts[0], "new|/bin/new|");
}

TEST_F(TextFactsTest, WhatIsMissingFromOneTickIsForgotten) {
  tick({process(10, "a")});
  tick({});
  EXPECT_FALSE(facts.indexOf(10));
  tick({process(10, "a")});
  EXPECT_EQ(readings, 2);
}

TEST_F(TextFactsTest, OfAPidThatStandsTwiceTheLaterIsFoundAndEachHasItsOwnFacts) {
  const std::vector<ProcessSample> twice{process(10, "a"), process(10, "b"), process(10, "")};
  for (int round = 0; round < 3; ++round) {
    tick(twice);
    EXPECT_EQ(facts[0], "a|/bin/a|");
    EXPECT_EQ(facts[1], "b|/bin/b|");
    EXPECT_EQ(facts[2], "|/bin/|");
    EXPECT_EQ(facts.indexOf(10), 2U);
  }
  tick({process(10, ""), process(10, "")});
  EXPECT_EQ(facts[0], "|/bin/|");
  EXPECT_EQ(facts[1], "|/bin/|") << "the first one has taken what was known";
}

TEST_F(TextFactsTest, APidThatIsNotThereIsNotFound) {
  tick({process(10, "a")});
  EXPECT_EQ(facts.indexOf(10), 0U);
  EXPECT_FALSE(facts.indexOf(11));
}

}  // namespace
}  // namespace korvantis
