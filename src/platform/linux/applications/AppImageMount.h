#pragma once

#include <mutex>
#include <string>
#include <unordered_map>

#include "platform/linux/applications/DesktopEntryIndex.h"
#include "platform/linux/applications/ProcessEvidence.h"
#include "platform/linux/applications/ProcessSurroundings.h"

namespace korvantis {

/// Evidence of an AppImage: it runs from a file system of its own, mounted for the one run, whose
/// top folder holds its entry. Each mount is looked at once and forgotten after its end. Any
/// thread.
class AppImageMount {
 public:
  /// The application of the process; null when it does not run from such a mount.
  EntryPointer find(ProcessEvidence& process, const ProcessSurroundings& around);

 private:
  std::mutex lock;
  std::unordered_map<std::string, EntryPointer> entries;
};

}  // namespace korvantis
