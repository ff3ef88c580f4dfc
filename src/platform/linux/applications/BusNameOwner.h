#pragma once

#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/ProcessEvidence.h"
#include "platform/linux/applications/ProcessSurroundings.h"

namespace korvantis {

/// Evidence of the session bus: an application takes its desktop id for a name there.
struct BusNameOwner {
  /// The application of the process; null when this tells none. Any thread.
  static EntryPointer find(ProcessEvidence& process, const ProcessSurroundings& around);
};

}  // namespace korvantis
