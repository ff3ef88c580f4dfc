#pragma once

#include <cstdint>
#include <functional>

namespace korvantis {

/// What the system asks of POSIX itself. Any thread.
struct PosixCalls {
  /// The user that this program runs as.
  std::function<std::uint32_t()> getuid;

  /// Sends `signal` to `pid`; 0 on success, -1 on failure. It reaches only the process that the
  /// last listing showed under that number, never one that has inherited the number since.
  std::function<int(std::int32_t pid, int signal)> kill;

  /// Fills `averages` with the load averages over 1, 5 and 15 minutes, at most `count`; gives how
  /// many, -1 on failure.
  std::function<int(double* averages, int count)> getloadavg;
};

}  // namespace korvantis
