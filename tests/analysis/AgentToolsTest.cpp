#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "analysis/AgentTools.h"
#include "core/LowerCase.h"

namespace korvantis {
namespace {

ProcessSample process(const std::string& name, const std::string& arguments = "",
                      const std::string& path = "") {
  ProcessSample sample;
  sample.name = name;
  sample.arguments = arguments;
  sample.executablePath = path;
  return sample;
}

std::string_view byName(const std::string& name) {
  return agentToolOf(process(name));
}

std::string_view byArguments(const std::string& arguments) {
  return agentToolOf(process("node", arguments));
}

std::string_view byPath(const std::string& path) {
  return agentToolOf(process("node", "", path));
}

TEST(AgentTools, OrdinaryProcessIsNone) {
  EXPECT_EQ(agentToolOf(process("", "", "")), "");
  EXPECT_EQ(agentToolOf(process("bash", "-l -c make", "/usr/bin/bash")), "");
}

TEST(AgentTools, ClaudeCodeByNameArgumentsOrPath) {
  EXPECT_EQ(byName("claude"), "Claude Code");
  EXPECT_EQ(byArguments("node /usr/lib/claude/cli.js"), "Claude Code");
  EXPECT_EQ(byPath("/opt/claude-code/bin/node"), "Claude Code");
}

TEST(AgentTools, CodexByNameArgumentsOrPath) {
  EXPECT_EQ(byName("codex"), "Codex CLI");
  EXPECT_EQ(byArguments("node /usr/bin/codex exec"), "Codex CLI");
  EXPECT_EQ(byPath("/opt/codex/codex-linux"), "Codex CLI");
}

TEST(AgentTools, GeminiByNameArgumentsOrPath) {
  EXPECT_EQ(byName("gemini"), "Gemini / Antigravity");
  EXPECT_EQ(byArguments("node gemini-cli/dist"), "Gemini / Antigravity");
  EXPECT_EQ(byPath("/opt/Antigravity/app"), "Gemini / Antigravity");
}

TEST(AgentTools, GeminisWordsCountOnlyWhereTheyAreSought) {
  EXPECT_EQ(byArguments("gemini"), "");
  EXPECT_EQ(byArguments("/opt/antigravity"), "");
  EXPECT_EQ(byPath("/opt/gemini-cli"), "");
}

TEST(AgentTools, CursorByNameOrByThePathOfTheMainProcessAlone) {
  EXPECT_EQ(byName("cursor"), "Cursor");
  ProcessSample window = process("x", "", "/Applications/Cursor.app/Contents/MacOS/Cursor");
  EXPECT_EQ(agentToolOf(window), "Cursor");
  window.helperRole = HelperRole::renderer;
  EXPECT_EQ(agentToolOf(window), "");
  window.name = "Cursor";
  EXPECT_EQ(agentToolOf(window), "Cursor");
  EXPECT_EQ(byArguments("/Applications/Cursor.app/Contents/MacOS/Cursor"), "");
}

TEST(AgentTools, RoleCountsForThePathOfCursorAlone) {
  ProcessSample helper = process("x", "", "/opt/claude");
  helper.helperRole = HelperRole::gpu;
  EXPECT_EQ(agentToolOf(helper), "Claude Code");
}

TEST(AgentTools, AiderByNameOrArguments) {
  EXPECT_EQ(byName("aider"), "Aider");
  EXPECT_EQ(byArguments("python -m aider"), "Aider");
  EXPECT_EQ(byArguments("raider"), "Aider");
  EXPECT_EQ(byPath("/opt/aider"), "");
}

TEST(AgentTools, OpenCodeByNameAlone) {
  EXPECT_EQ(byName("opencode"), "OpenCode");
  EXPECT_EQ(byArguments("opencode"), "");
  EXPECT_EQ(byPath("/opt/opencode"), "");
}

TEST(AgentTools, NamesMustBeEqualNotBegin) {
  for (const std::string name :
       {"claude2", "aclaude", "claude ", "codex-tui", "gemini-cli", "cur"}) {
    EXPECT_EQ(byName(name), "") << name;
  }
}

TEST(AgentTools, CaseCountsForNothing) {
  EXPECT_EQ(byName("Claude"), "Claude Code");
  EXPECT_EQ(byName("OPENCODE"), "OpenCode");
  EXPECT_EQ(byArguments("/Users/x/CLAUDE.md"), "Claude Code");
  EXPECT_EQ(byArguments("-m Aider"), "Aider");
  EXPECT_EQ(byArguments("GEMINI-CLI"), "Gemini / Antigravity");
  EXPECT_EQ(byPath("/OPT/CodeX"), "Codex CLI");
}

TEST(AgentTools, UnrelatedProgramWithAFolderOrFileThatBeginsWithClaudeIsClaudeCode) {
  EXPECT_EQ(byArguments("vim /home/ada/claude-notes.txt"), "Claude Code");
  EXPECT_EQ(byArguments("tail -f /home/ada/claudette/log"), "Claude Code");
}

TEST(AgentTools, WordsWithoutTheirSlashCountForNothing) {
  EXPECT_EQ(byArguments("claude --help"), "");
  EXPECT_EQ(byArguments("/home/ada/.claude/x"), "");
  EXPECT_EQ(byPath("claude"), "");
}

TEST(AgentTools, FirstRowOfTheTableDecides) {
  EXPECT_EQ(agentToolOf(process("opencode", "/claude", "/codex")), "Claude Code");
  EXPECT_EQ(agentToolOf(process("node", "/claude", "/opt/codex")), "Claude Code");
  EXPECT_EQ(agentToolOf(process("aider", "/codex")), "Codex CLI");
  EXPECT_EQ(agentToolOf(process("cursor", "gemini-cli")), "Gemini / Antigravity");
  EXPECT_EQ(agentToolOf(process("cursor", "aider")), "Cursor");
  EXPECT_EQ(agentToolOf(process("opencode", "aider")), "Aider");
}

TEST(AgentTools, WordMayStandAtEitherEnd) {
  EXPECT_EQ(byArguments("/claude"), "Claude Code");
  EXPECT_EQ(byArguments("x/claude"), "Claude Code");
  EXPECT_EQ(byArguments("/claud"), "");
  EXPECT_EQ(byArguments("//cl/clau/claude"), "Claude Code");
}

TEST(AgentTools, LettersOfOtherAlphabetsBesideAWordDontHideIt) {
  EXPECT_EQ(byArguments("/home/\u00C4da/Claude"), "Claude Code");
  EXPECT_EQ(byPath("/home/\u0416/CODEX/\xFF"), "Codex CLI");
  EXPECT_EQ(byArguments("\xFF /claude"), "Claude Code");
  // The dotted capital I becomes an i with a dot above; the word is whole before the dot.
  EXPECT_EQ(byArguments("GEMINI-CL\u0130"), "Gemini / Antigravity");
  EXPECT_EQ(byName("GEM\u0130NI"), "");
}

/// The same table, written down without any care for speed.
std::string_view plainAnswer(const ProcessSample& sample) {
  const std::string name = lowerCased(sample.name);
  const auto argumentsHave = [&](const char* word) {
    return lowerCased(sample.arguments).find(word) != std::string::npos;
  };
  const auto pathHas = [&](const char* word) {
    return lowerCased(sample.executablePath).find(word) != std::string::npos;
  };
  if (name == "claude" || argumentsHave("/claude") || pathHas("/claude")) return "Claude Code";
  if (name == "codex" || argumentsHave("/codex") || pathHas("/codex")) return "Codex CLI";
  if (name == "gemini" || argumentsHave("gemini-cli") || pathHas("antigravity")) {
    return "Gemini / Antigravity";
  }
  if (name == "cursor" || pathHas("cursor.app/contents/macos/cursor")) return "Cursor";
  if (name == "aider" || argumentsHave("aider")) return "Aider";
  return name == "opencode" ? "OpenCode" : "";
}

TEST(AgentTools, SearchGivesWhatPlainLowerCasingGivesForRandomTexts) {
  const std::vector<std::string> pieces{
      "/",      "claude",      "CODEX",      "gemini-cli",
      "Gemini", "antigravity", "aider",      "ai",
      "der",    "-",           "cursor.app", "/Contents/MacOS/",
      "Cursor", "opencode",    " ",          "\u00C4",
      "\u0130", "\u212A",      "\xFF",       "\xC4",
      "cl",     "aude",        "co",         "dex",
      "g",      "a",           "c",          std::string(1, '\0')};
  std::mt19937 random(1);  // NOLINT: the same texts every time
  const auto text = [&] {
    std::string made;
    for (auto count = random() % 7; count > 0; --count) made += pieces[random() % pieces.size()];
    return made;
  };
  int agents = 0;
  for (int round = 0; round < 20000; ++round) {
    const ProcessSample sample = process(text(), text(), text());
    const std::string_view expected = plainAnswer(sample);
    agents += expected.empty() ? 0 : 1;
    ASSERT_EQ(agentToolOf(sample), expected)
        << sample.name << " | " << sample.arguments << " | " << sample.executablePath;
  }
  EXPECT_GT(agents, 2000);
  EXPECT_LT(agents, 18000);
}

}  // namespace
}  // namespace korvantis
