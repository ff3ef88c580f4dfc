#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/AgentTokens.h"
#include "analysis/TextFacts.h"
#include "core/AgentSession.h"
#include "core/PlanLimitStatus.h"
#include "core/ProcessSample.h"
#include "platform/Clock.h"
#include "platform/FileManagerCalls.h"

namespace korvantis {

/// Finds the coding agents among the processes, and what is left of their plans.
///
/// All of it comes from the process list and from the sizes of local log files; no agent and no
/// service is asked, so states and tokens are estimates and the plans are sample values. Any
/// thread, also several at once.
class AgentScanner {
 public:
  /// What one look at the processes shows.
  struct Scan {
    /// The busiest first.
    std::vector<AgentSession> sessions;
    /// Always the same two.
    std::vector<PlanLimitStatus> planLimits;
  };

  /// A scanner that takes the time from `clock` and the logs from `files`, which it asks once, now,
  /// for the home folder.
  AgentScanner(Clock clock, FileManagerCalls files);

  /// Judges the processes of one tick, whose projects are known. At most every 30 s it walks
  /// through the logs, and then blocks as long as the file system does.
  Scan scanAgentsAndLimits(const std::vector<ProcessSample>& processes);

 private:
  void refreshLocalTokenLogsIfNeeded();
  bool beginTokenScan();

  const Clock clock;
  const FileManagerCalls fileManager;
  const std::string homeDir;
  /// Guards the fields below; never held during the walk.
  std::mutex lock;
  /// Sample values until the first walk that finds logs.
  AgentTokens cachedClaudeTokens{.today = 184200, .week = 1420500};
  /// Sample values for good: there is no log to be had.
  AgentTokens cachedCodexTokens{.today = 96400, .week = 680000};
  /// Seconds since 1970.
  double lastTokenScanTime = 0;
  /// Which agent each process of the last tick was taken for. Spares work and changes no result.
  TextFacts<std::string_view> knownTools;
};

}  // namespace korvantis
