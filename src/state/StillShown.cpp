#include "state/StillShown.h"

#include <cmath>

namespace korvantis {

bool StillShown::isStill(std::int32_t pid, Instant startedAt) const {
  if (!start) return true;
  const std::optional<double> now = start(pid);
  return now && std::floor(*now) == std::floor(startedAt.secondsSince1970);
}

AppGroup StillShown::of(AppGroup group) const {
  std::erase_if(group.processes, [this](const ProcessSample& process) {
    return !isStill(process.pid, process.startedAt);
  });
  return group;
}

std::vector<IdleServer> StillShown::of(std::vector<IdleServer> servers) const {
  std::erase_if(
      servers, [this](const IdleServer& server) { return !isStill(server.pid, server.startedAt); });
  return servers;
}

bool StillShown::isStillIn(const EngineSnapshot& snapshot, std::int32_t pid) const {
  for (const AppGroup& group : snapshot.appGroups) {
    for (const ProcessSample& process : group.processes) {
      if (process.pid == pid) return isStill(pid, process.startedAt);
    }
  }
  return true;
}

}  // namespace korvantis
