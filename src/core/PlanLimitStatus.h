#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One row of a subscription plan's limits.
struct PlanLimitStatus {
  std::string tool;
  std::string planName;
  double fiveHourUsedPercent = 0;
  std::string fiveHourResetText;
  double weeklyUsedPercent = 0;
  std::string weeklyResetText;
  std::string paceText = "On pace";
  std::int64_t tokensToday = 0;
  std::int64_t tokensWeek = 0;
  std::string colorHex = "#d97757";

  bool operator==(const PlanLimitStatus&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return tool; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"tool", &PlanLimitStatus::tool},
                      Field{"planName", &PlanLimitStatus::planName},
                      Field{"fiveHourUsedPercent", &PlanLimitStatus::fiveHourUsedPercent},
                      Field{"fiveHourResetText", &PlanLimitStatus::fiveHourResetText},
                      Field{"weeklyUsedPercent", &PlanLimitStatus::weeklyUsedPercent},
                      Field{"weeklyResetText", &PlanLimitStatus::weeklyResetText},
                      Field{"paceText", &PlanLimitStatus::paceText},
                      Field{"tokensToday", &PlanLimitStatus::tokensToday},
                      Field{"tokensWeek", &PlanLimitStatus::tokensWeek},
                      Field{"colorHex", &PlanLimitStatus::colorHex}};
  }
};

}  // namespace korvantis
