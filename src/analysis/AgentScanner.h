#pragma once

#include <vector>

#include "core/AgentSession.h"
#include "core/PlanLimitStatus.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// Finds the coding agents among the processes, and what is left of their plans. For now it finds
/// none. Any thread.
class AgentScanner {
 public:
  /// What one look at the processes shows.
  struct Scan {
    std::vector<AgentSession> sessions;
    std::vector<PlanLimitStatus> planLimits;
  };

  /// Judges the processes of one tick. For now both lists are empty.
  Scan scanAgentsAndLimits(const std::vector<ProcessSample>& processes);
};

}  // namespace korvantis
