#pragma once

#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/DarwinTypes.h"

namespace korvantis {

/// Remembers when each process that was shown began, so that a signal never reaches another one
/// that has got its number since. Any thread.
class ShownProcesses {
 public:
  /// `proc_listallpids`; forgets what is no longer listed.
  int listAllPids(void* buffer, int bufferSize);

  /// `proc_pidinfo`; remembers the start of a process that `PROC_PIDTBSDINFO` shows.
  int processInfo(int pid, int flavor, std::uint64_t argument, void* buffer, int bufferSize);

  /// `kill`; refuses pids below 1 and processes that were not shown.
  int kill(std::int32_t pid, int signal) const;

 private:
  using Start = std::pair<std::uint64_t, std::uint64_t>;

  mutable std::mutex lock;
  std::unordered_map<std::int32_t, Start> starts;
};

}  // namespace korvantis
