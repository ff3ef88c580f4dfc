#pragma once

#include <vector>

#include "core/AppGroup.h"
#include "core/AppLimit.h"
#include "core/IdleServer.h"
#include "core/Insight.h"
#include "core/MutedApp.h"
#include "core/StrainKind.h"
#include "core/SystemSample.h"

namespace korvantis {

/// Turns the figures of a tick into findings in words and says what is under strain. For now it
/// finds nothing. Any thread.
class InsightEngine {
 public:
  /// What one tick led to.
  struct Evaluation {
    /// The whole recent list, newest first.
    std::vector<Insight> newInsights;
    std::vector<StrainKind> activeStrains;
  };

  /// Judges one tick. `hotCelsius` is the temperature from which the machine counts as hot. For
  /// now both lists are empty.
  Evaluation evaluate(const SystemSample& system, const std::vector<AppGroup>& appGroups,
                      const std::vector<IdleServer>& idleServers,
                      const std::vector<AppLimit>& appLimits,
                      const std::vector<MutedApp>& mutedApps, double hotCelsius);
};

}  // namespace korvantis
