#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "analysis/AppGrouper.h"
#include "analysis/GrouperFixtures.h"
#include "core/EnumerationTable.h"

namespace korvantis {
namespace {

constexpr std::int32_t root = 100;
const std::optional<std::string> bundle = "/Applications/Foo.app";

/// A helper that nothing gives away but what a test adds.
ProcessSample helper(const std::string& arguments = "") {
  ProcessSample process = processAt(200, "/Applications/Foo.app/Contents/Helpers/h", "h");
  process.arguments = arguments;
  return process;
}

HelperRole roleOf(const ProcessSample& process) {
  return AppGrouper::classifyHelperRole(process, root, bundle);
}

HelperRole roleOfArguments(const std::string& arguments) {
  return roleOf(helper(arguments));
}

struct Row {
  std::string words;
  HelperRole role;
};

/// What decides, from the strongest to the weakest.
const std::vector<Row>& rows() {
  static const std::vector<Row> table{
      {"--type=renderer", HelperRole::renderer},
      {"helper (renderer)", HelperRole::renderer},
      {"webcontent", HelperRole::renderer},
      {"renderer", HelperRole::renderer},
      {"extension", HelperRole::extensionHost},
      {"--type=extension", HelperRole::extensionHost},
      {"plugin", HelperRole::extensionHost},
      {"appex", HelperRole::extensionHost},
      {"--type=gpu-process", HelperRole::gpu},
      {"helper (gpu)", HelperRole::gpu},
      {"gpu", HelperRole::gpu},
      {"graphics", HelperRole::gpu},
      {"metal", HelperRole::gpu},
      {"--type=utility network", HelperRole::network},
      {"networking", HelperRole::network},
      {"network.service", HelperRole::network},
      {"helper (network)", HelperRole::network},
  };
  return table;
}

TEST(HelperRole, EachWordAloneGivesItsRole) {
  for (const Row& row : rows()) EXPECT_EQ(roleOfArguments(row.words), row.role) << row.words;
}

TEST(HelperRole, EachWordCountsInTheMiddleOfAWord) {
  for (const Row& row : rows()) {
    EXPECT_EQ(roleOfArguments("x" + row.words + "x"), row.role) << row.words;
  }
}

TEST(HelperRole, EachWordCountsInAnyCase) {
  for (const Row& row : rows()) {
    std::string upper;
    for (const char character : row.words) {
      const bool isLower = character >= 'a' && character <= 'z';
      upper += isLower ? static_cast<char>(character - 'a' + 'A') : character;
    }
    EXPECT_EQ(roleOfArguments(upper), row.role) << upper;
  }
}

TEST(HelperRole, EachWordCountsInNameAndPathAsWell) {
  for (const Row& row : rows()) {
    ProcessSample named = helper();
    named.name = row.words;
    EXPECT_EQ(roleOf(named), row.role) << row.words;
    ProcessSample placed = helper();
    placed.executablePath = "/opt/" + row.words;
    EXPECT_EQ(roleOf(placed), row.role) << row.words;
  }
}

TEST(HelperRole, EveryEarlierRowWinsOverEveryLaterOne) {
  for (std::size_t first = 0; first < rows().size(); ++first) {
    for (std::size_t second = first + 1; second < rows().size(); ++second) {
      const Row& strong = rows()[first];
      const Row& weak = rows()[second];
      EXPECT_EQ(roleOfArguments(weak.words + " " + strong.words), strong.role)
          << weak.words << " | " << strong.words;
    }
  }
}

/// The rule taken row by row with plain searches.
HelperRole rowByRow(const std::string& haystack) {
  const auto has = [&haystack](const std::string& word) {
    return haystack.find(word) != std::string::npos;
  };
  for (const Row& row : rows()) {
    const bool isPair = row.words == "--type=utility network";
    if (isPair ? has("--type=utility") && has("network") : has(row.words)) return row.role;
  }
  return HelperRole::other;
}

TEST(HelperRole, RandomHaystacksAgreeWithSearchesRowByRow) {
  std::mt19937 random(3);
  std::map<HelperRole, int> seen;
  for (int round = 0; round < 20000; ++round) {
    ProcessSample process = helper();
    process.name.clear();
    process.executablePath.clear();
    for (auto left = random() % 6; left > 0; --left) {
      const std::string& words = rows()[random() % rows().size()].words;
      const std::size_t start = random() % words.size();
      process.arguments += words.substr(start * (random() % 2), 1 + random() % words.size());
    }
    const HelperRole expected = rowByRow("  " + process.arguments);
    ASSERT_EQ(roleOf(process), expected) << process.arguments;
    ++seen[expected];
  }
  for (const HelperRole role : allCases<HelperRole>()) {
    if (role != HelperRole::main) {
      EXPECT_GT(seen[role], 100) << rawValue(role);
    }
  }
}

TEST(HelperRole, RendererFlagWithExtensionIsRendererSinceRendererTestsComeFirst) {
  EXPECT_EQ(roleOfArguments("--extension-process --type=renderer"), HelperRole::renderer);
}

TEST(HelperRole, NothingGivenAwayIsOther) {
  EXPECT_EQ(roleOfArguments("--idle"), HelperRole::other);
}

TEST(HelperRole, UtilityWithNetworkAnywhereIsNetwork) {
  EXPECT_EQ(roleOfArguments("--type=utility --sub=network"), HelperRole::network);
  EXPECT_EQ(roleOfArguments("network --type=utility"), HelperRole::network);
  ProcessSample named = helper("--type=utility");
  named.name = "My Network";
  EXPECT_EQ(roleOf(named), HelperRole::network);
  ProcessSample placed = helper("--type=utility");
  placed.executablePath = "/opt/Network/h";
  EXPECT_EQ(roleOf(placed), HelperRole::network);
}

TEST(HelperRole, NetworkWithoutUtilityIsNotNetwork) {
  EXPECT_EQ(roleOfArguments("network"), HelperRole::other);
  EXPECT_EQ(roleOfArguments("network service"), HelperRole::other);
  EXPECT_EQ(roleOfArguments("helper network"), HelperRole::other);
  EXPECT_EQ(roleOfArguments("--type=utilit network"), HelperRole::other);
}

TEST(HelperRole, UtilityWithoutNetworkIsOther) {
  EXPECT_EQ(roleOfArguments("--type=utility"), HelperRole::other);
}

TEST(HelperRole, NameJoinsPathAndArgumentsWithABlank) {
  // "helper" ends the name and "(gpu)" begins the path: the blank between them completes the word.
  ProcessSample acrossNameAndPath = helper();
  acrossNameAndPath.name = "Helper";
  acrossNameAndPath.executablePath = "(network)";
  EXPECT_EQ(roleOf(acrossNameAndPath), HelperRole::network);
  ProcessSample acrossPathAndArguments = helper("(Network)");
  acrossPathAndArguments.executablePath = "/opt/helper";
  EXPECT_EQ(roleOf(acrossPathAndArguments), HelperRole::network);
}

TEST(HelperRole, PiecesAreNotGluedWithoutABlank) {
  ProcessSample process = helper("u");
  process.name = "g";
  process.executablePath = "p";
  EXPECT_EQ(roleOf(process), HelperRole::other);
}

TEST(HelperRole, WordInTheApplicationsOwnFolderCountsForEveryHelper) {
  ProcessSample process =
      processAt(200, "/Applications/Metal Studio.app/Contents/Helpers/worker", "worker");
  EXPECT_EQ(AppGrouper::classifyHelperRole(process, root, "/Applications/Metal Studio.app"),
            HelperRole::gpu);
}

TEST(HelperRole, KelvinSignLowersToThePlainLetter) {
  EXPECT_EQ(roleOfArguments("NETWOR\xE2\x84\xAAING"), HelperRole::network);
}

TEST(HelperRole, BytesThatAreNoTextDontHideAWord) {
  EXPECT_EQ(roleOfArguments("\xFF METAL \xC3"), HelperRole::gpu);
}

TEST(HelperRole, RootIsMainWithoutAnyFurtherTest) {
  ProcessSample process = helper("--type=renderer");
  process.pid = root;
  EXPECT_EQ(roleOf(process), HelperRole::main);
  EXPECT_EQ(AppGrouper::classifyHelperRole(process, root, std::nullopt), HelperRole::main);
}

TEST(HelperRole, WithoutABundleAQuietProcessIsOther) {
  const ProcessSample process = processAt(200, "/Applications/Foo.app/Contents/MacOS/Foo", "Foo");
  EXPECT_EQ(AppGrouper::classifyHelperRole(process, root, std::nullopt), HelperRole::other);
}

TEST(HelperRole, WithoutABundleAWordStillDecides) {
  EXPECT_EQ(AppGrouper::classifyHelperRole(helper("--type=renderer"), root, std::nullopt),
            HelperRole::renderer);
}

TEST(HelperRole, SecondInstanceOfTheMainProgramIsMain) {
  EXPECT_EQ(roleOf(processAt(200, "/Applications/Foo.app/Contents/MacOS/Foo", "Foo")),
            HelperRole::main);
}

TEST(HelperRole, OtherProgramBesideTheMainOneIsOther) {
  EXPECT_EQ(roleOf(processAt(200, "/Applications/Foo.app/Contents/MacOS/crashpad", "crashpad")),
            HelperRole::other);
  EXPECT_EQ(roleOf(processAt(200, "/Applications/Foo.app/Contents/MacOS/Foo", "foo")),
            HelperRole::other);
}

TEST(HelperRole, MainProgramsNameOutsideItsFolderIsOther) {
  EXPECT_EQ(roleOf(processAt(200, "/Applications/Foo.app/Contents/Helpers/Foo", "Foo")),
            HelperRole::other);
  EXPECT_EQ(roleOf(processAt(200, "/Applications/Foo.app/Contents/MacOS", "Foo")),
            HelperRole::other);
  EXPECT_EQ(roleOf(processAt(200, "", "Foo")), HelperRole::other);
}

TEST(HelperRole, RolesStandInTheOrderOfABreakdownWithTheirLabels) {
  std::vector<std::string> labels;
  for (const HelperRole role : allCases<HelperRole>()) labels.emplace_back(rawValue(role));
  EXPECT_EQ(labels, (std::vector<std::string>{"Main app", "Tabs & windows", "Extensions",
                                              "Graphics", "Network", "Other helpers"}));
}

}  // namespace
}  // namespace korvantis
