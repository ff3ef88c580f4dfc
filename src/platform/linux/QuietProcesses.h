#pragma once

#include <string>

#include "platform/linux/ProcessReading.h"
#include "platform/linux/ProcessSources.h"
#include "platform/linux/RememberedProcesses.h"

namespace korvantis {

/// Spares processes that sleep the reading of what only a running one can change: most of the
/// processes of a machine have not run since the last tick, and their CPU clock, which is cheap,
/// tells that. Where there is no such clock, all is read each time.
class QuietProcesses {
 public:
  /// However quiet a process is, it is read in full again after this many seconds. The first time
  /// lasts up to as much longer, so that processes which were first seen together fall due at
  /// different times.
  static constexpr std::int32_t life = 25;

  /// Both must outlive it.
  QuietProcesses(const ProcessSources& processSources, RememberedProcesses& rememberedProcesses)
      : sources(processSources), remembered(rememberedProcesses) {}

  /// Asks the CPU clock of a process that has just been opened, and gives it the status that it
  /// was last read with if it has not run since. One that is seen for the first time is not asked.
  void begin(ProcessReading& reading) const;

  /// Remembers what was read in full.
  void keep(const ProcessReading& reading, const ProcessStatus& status,
            const ProcessDiskBytes& disk) const;

  /// The bytes of its command line. They lie in its own memory, where only it can change them.
  std::string commandLine(const ProcessReading& reading) const;

 private:
  const ProcessSources& sources;
  RememberedProcesses& remembered;
};

}  // namespace korvantis
