#pragma once

#include <vector>

#include "analysis/AgentTokens.h"
#include "core/PlanLimitStatus.h"

namespace korvantis {

/// The two rows of plan limits, always both and in this order. Plans, reset times and allowances
/// are sample values: nobody is asked for the real ones. Any thread.
std::vector<PlanLimitStatus> planLimits(const AgentTokens& claude, const AgentTokens& codex);

}  // namespace korvantis
