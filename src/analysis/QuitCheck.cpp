#include "analysis/QuitCheck.h"

namespace korvantis {

QuitSafetyResult QuitCheck::evaluate(const AppGroup& /*group*/,
                                     const std::vector<SleepBlocker>& /*sleepBlockers*/) {
  return {.verdict = QuitSafetyVerdictKind::askFirst,
          .reason = {},
          .freedMemoryBytes = 0,
          .freedPorts = {}};
}

QuitSafetyResult QuitCheck::evaluate(std::int32_t /*pid*/,
                                     const std::vector<ProcessSample>& /*processes*/,
                                     const std::vector<SleepBlocker>& /*sleepBlockers*/) {
  return {.verdict = QuitSafetyVerdictKind::askFirst,
          .reason = {},
          .freedMemoryBytes = 0,
          .freedPorts = {}};
}

}  // namespace korvantis
