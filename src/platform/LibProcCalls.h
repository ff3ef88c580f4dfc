#pragma once

#include <cstdint>
#include <functional>

#include "platform/DarwinTypes.h"

namespace korvantis {

/// What the process sampler asks of the system about processes, in the shapes of `libproc`.
/// All members may be called from several threads at once.
struct LibProcCalls {
  /// Fills `buffer` with pids (int32 each). Gives the number of *bytes* filled, at most
  /// `bufferSize`; below 1 on failure.
  std::function<int(void* buffer, int bufferSize)> proc_listallpids;

  /// Fills `buffer` with the structure of `flavor` (`PROC_PIDTBSDINFO`, `PROC_PIDVNODEPATHINFO`,
  /// `PROC_PIDLISTFDS`). Gives the bytes filled; below 1 when the process is gone or unreadable.
  std::function<int(int pid, int flavor, std::uint64_t argument, void* buffer, int bufferSize)>
      proc_pidinfo;

  /// Fills a `rusage_info_v4` for `RUSAGE_INFO_V4`; 0 on success, -1 on failure. Times are in
  /// units of the mach time base.
  std::function<int(int pid, int flavor, void* buffer)> proc_pid_rusage;

  /// Fills `buffer` with the executable path; gives its length in bytes, below 1 on failure.
  std::function<int(int pid, void* buffer, std::uint32_t bufferSize)> proc_pidpath;

  /// Fills a `socket_fdinfo` for `PROC_PIDFDSOCKETINFO`; gives the bytes filled.
  std::function<int(int pid, int descriptor, int flavor, void* buffer, int bufferSize)>
      proc_pidfdinfo;

  /// The process that the system holds responsible for `pid`; 0 or below when it names none.
  /// Empty when the system has no such function.
  std::function<std::int32_t(std::int32_t pid)> responsibility_get_pid_responsible_for_pid;
};

}  // namespace korvantis
