#pragma once

#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "core/AppGroup.h"
#include "core/IdleServer.h"
#include "core/Instant.h"
#include "core/ListeningPortItem.h"
#include "core/ProcessSample.h"
#include "platform/Clock.h"

namespace korvantis {

/// Finds the development servers that somebody started and forgot, and who holds which port.
///
/// A process that works in a project and holds a service port is a development server, whatever
/// its name. Any thread; calls that overlap are safe, and the one that ends last is remembered.
class ServerWatcher {
 public:
  /// What one look at the processes shows.
  struct Evaluation {
    /// Largest memory first.
    std::vector<IdleServer> idleServers;
    /// Ascending by port over the whole machine.
    std::vector<ListeningPortItem> listeningPorts;
  };

  /// How long a server must have been quiet to count as forgotten, in seconds. Not to be changed
  /// while another thread evaluates.
  double idleThresholdSeconds = 1800;

  /// A watcher that takes the time from `clock`.
  explicit ServerWatcher(Clock clock);

  /// Judges the processes of one tick, whose projects are known; the groups give each process its
  /// application's name. A server that is met for the first time and is quiet has been so since it
  /// was started.
  Evaluation evaluate(const std::vector<ProcessSample>& processes,
                      const std::vector<AppGroup>& appGroups);

 private:
  Clock clock;
  /// Guards `quietSinceByPID`; held for copies only.
  std::mutex lock;
  /// Since when each server of the last tick has been quiet.
  std::unordered_map<std::int32_t, Instant> quietSinceByPID;
};

}  // namespace korvantis
