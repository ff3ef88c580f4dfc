#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/ListeningSockets.h"

namespace korvantis {

class LinuxApplications;

/// Where the figures of processes come from. Everything that is a file lies under `root`, so that
/// the recorded `/proc` of another machine can be read in place of the real one; the rest can be
/// left empty and is then done without. All members may be called from several threads at once.
struct ProcessSources {
  /// The folder that stands for "/", without a slash at its end.
  std::string root;
  /// How many descriptors may stay open between questions.
  int keptDescriptors = 0;
  /// The user whose processes are the user's own.
  std::uint32_t userID = 0;
  /// When the machine started, in nanoseconds since 1970.
  std::int64_t bootNanoseconds = 0;
  std::uint64_t clockTicksPerSecond = 100;
  /// A clock in seconds that never goes back, for whatever is not done on each call.
  std::function<double()> steadySeconds;
  /// The CPU time of a whole process; absent when there is no such process.
  std::function<std::optional<std::uint64_t>(std::int32_t pid)> cpuNanoseconds;
  /// Every listening TCP socket; absent when the kernel does not answer.
  std::function<std::optional<std::vector<ListeningSocket>>()> listeningSockets;
  /// The system calls of the same names, with the result and `errno` of the system.
  std::function<int(std::int32_t pid)> pidfdOpen;
  std::function<int(int descriptor, int signal)> pidfdSendSignal;
  std::function<int(std::int32_t pid, int signal)> kill;
  /// Tells which processes are parts of desktop applications.
  std::shared_ptr<LinuxApplications> applications;
};

/// The running system's.
ProcessSources systemProcessSources();

}  // namespace korvantis
