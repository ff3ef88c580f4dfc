#include "analysis/InsightEngine.h"

namespace korvantis {

InsightEngine::Evaluation InsightEngine::evaluate(const SystemSample& /*system*/,
                                                  const std::vector<AppGroup>& /*appGroups*/,
                                                  const std::vector<IdleServer>& /*idleServers*/,
                                                  const std::vector<AppLimit>& /*appLimits*/,
                                                  const std::vector<MutedApp>& /*mutedApps*/,
                                                  double /*hotCelsius*/) {
  return {};
}

}  // namespace korvantis
