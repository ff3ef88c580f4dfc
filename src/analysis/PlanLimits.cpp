#include "analysis/PlanLimits.h"

#include <algorithm>
#include <cstdint>

#include "core/Rounding.h"

namespace korvantis {

namespace {

constexpr double mostPercent = 98;
/// Above this share of its five hours a plan is used up before they are over.
constexpr double fastPercent = 70;

/// The share of an allowance that is used, held to `leastPercent` and the common top.
double usedPercent(std::int64_t tokens, double allowance, double leastPercent) {
  const double percent = static_cast<double>(tokens) / allowance * 100.0;
  return percent < leastPercent ? leastPercent : std::min(percent, mostPercent);
}

}  // namespace

std::vector<PlanLimitStatus> planLimits(const AgentTokens& claude, const AgentTokens& codex) {
  const double claudeFiveHours = usedPercent(claude.today, 450000, 14);
  return {{.tool = "Claude Code",
           .planName = "Max 5x Plan",
           .fiveHourUsedPercent = roundedToOneDecimal(claudeFiveHours),
           .fiveHourResetText = "Resets in 2h 18m",
           .weeklyUsedPercent = roundedToOneDecimal(usedPercent(claude.week, 3500000, 28)),
           .weeklyResetText = "Resets Thu 9:00 AM",
           .paceText = claudeFiveHours > fastPercent ? "Burning fast" : "On pace",
           .tokensToday = claude.today,
           .tokensWeek = claude.week,
           .colorHex = "#d97757"},
          {.tool = "Codex",
           .planName = "Pro Plan",
           .fiveHourUsedPercent = roundedToOneDecimal(usedPercent(codex.today, 500000, 9)),
           .fiveHourResetText = "Resets in 3h 42m",
           .weeklyUsedPercent = roundedToOneDecimal(usedPercent(codex.week, 4000000, 19)),
           .weeklyResetText = "Resets Mon 12:00 AM",
           .paceText = "Plenty left",
           .tokensToday = codex.today,
           .tokensWeek = codex.week,
           .colorHex = "#3068d8"}};
}

}  // namespace korvantis
