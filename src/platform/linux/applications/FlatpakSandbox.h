#pragma once

#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/ProcessEvidence.h"
#include "platform/linux/applications/ProcessSurroundings.h"

namespace korvantis {

/// Evidence of a flatpak's sandbox, which names the one application in it. Paths in there are not
/// those of this machine.
struct FlatpakSandbox {
  /// The application of the process; null when this tells none. Any thread.
  static EntryPointer find(ProcessEvidence& process, const ProcessSurroundings& around);
};

}  // namespace korvantis
