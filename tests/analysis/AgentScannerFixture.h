#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/AgentScanner.h"
#include "support/ScriptedFiles.h"

namespace korvantis::test {

/// A scanner over scripted files at a scripted time, made at its first use.
class AgentScannerFixture : public testing::Test {
 protected:
  static constexpr const char* logFolder = "/home/ada/.claude/projects";

  AgentScanner& scanner() {
    if (!made) made.emplace(Clock{[this] { return now; }}, files.calls());
    return *made;
  }

  AgentScanner::Scan scan(const std::vector<ProcessSample>& processes = {}) {
    return scanner().scanAgentsAndLimits(processes);
  }

  /// The tokens of the row at `index` after one more scan.
  AgentTokens tokens(std::size_t index = 0) {
    const PlanLimitStatus row = scan().planLimits.at(index);
    return {.today = row.tokensToday, .week = row.tokensWeek};
  }

  static ProcessSample processNamed(std::int32_t pid, std::string name, double cpuPercent = 0,
                                    std::int32_t ppid = 1) {
    ProcessSample process;
    process.pid = pid;
    process.ppid = ppid;
    process.name = std::move(name);
    process.cpuPercent = cpuPercent;
    return process;
  }

  double now = 1'750'000'000;
  ScriptedFiles files;
  std::optional<AgentScanner> made;
};

}  // namespace korvantis::test
