#pragma once

#include <cstdint>

#include "platform/linux/ProcessSources.h"
#include "platform/linux/RememberedProcesses.h"

namespace korvantis {

/// Sends signals to processes that have been shown, and to no other one that got their number.
class ProcessSignals {
 public:
  /// Both must outlive it.
  ProcessSignals(const ProcessSources& processSources,
                 const RememberedProcesses& rememberedProcesses)
      : sources(processSources), remembered(rememberedProcesses) {}

  /// 0 on success, -1 with `errno` set on failure. Pids below 1, which the system takes for whole
  /// groups of processes, never get a signal. Any thread.
  int send(std::int32_t pid, int signal) const;

 private:
  bool isStillShown(std::int32_t pid) const;

  const ProcessSources& sources;
  const RememberedProcesses& remembered;
};

}  // namespace korvantis
