#pragma once

#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/ProcessEvidence.h"
#include "platform/linux/applications/ProcessSurroundings.h"

namespace korvantis {

/// Evidence of the control group: desktops put each start of an application into one that is named
/// after it. That tells the process that was started; what it starts may be another application.
struct ControlGroupName {
  /// The application of the process; null when this tells none. Any thread.
  static EntryPointer find(ProcessEvidence& process, const ProcessSurroundings& around);

  /// The application that the process's group is named after, whether or not the process is the
  /// one that was started; null when there is none.
  static EntryPointer named(ProcessEvidence& process, const DesktopEntryIndex& index);
};

}  // namespace korvantis
