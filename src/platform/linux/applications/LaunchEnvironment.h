#pragma once

#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/ProcessEvidence.h"
#include "platform/linux/applications/ProcessSurroundings.h"

namespace korvantis {

/// Evidence of the start: the desktop leaves the entry and the number of the process that it has
/// started in that one's environment; children inherit both, but have other numbers.
struct LaunchEnvironment {
  /// The application of the process; null when this tells none. Any thread.
  static EntryPointer find(ProcessEvidence& process, const ProcessSurroundings& around);
};

}  // namespace korvantis
