#include "analysis/AgentScanner.h"

namespace korvantis {

AgentScanner::Scan AgentScanner::scanAgentsAndLimits(
    const std::vector<ProcessSample>& /*processes*/) {
  return {};
}

}  // namespace korvantis
