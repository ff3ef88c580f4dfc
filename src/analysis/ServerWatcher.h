#pragma once

#include <vector>

#include "core/AppGroup.h"
#include "core/IdleServer.h"
#include "core/ListeningPortItem.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// Finds the development servers that somebody started and forgot, and who holds which port. For
/// now it finds none. Any thread.
class ServerWatcher {
 public:
  /// What one look at the processes shows.
  struct Evaluation {
    std::vector<IdleServer> idleServers;
    std::vector<ListeningPortItem> listeningPorts;
  };

  /// Judges the processes of one tick; the groups give each its application's name. For now both
  /// lists are empty.
  Evaluation evaluate(const std::vector<ProcessSample>& processes,
                      const std::vector<AppGroup>& appGroups);
};

}  // namespace korvantis
