#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/ProcessIdentity.h"
#include "platform/linux/applications/DesktopEntryIndex.h"

namespace korvantis {

/// What is known around a process while it is looked at.
struct ProcessSurroundings {
  /// The folder that stands for "/".
  std::string root;
  std::shared_ptr<const DesktopEntryIndex> index;
  /// The application that another process is part of, by its own evidence; null when none.
  std::function<EntryPointer(std::int32_t pid)> applicationOf;
  /// The path of another process's control group; empty when it is not known.
  std::function<std::string(std::int32_t pid)> groupOf;
  /// The parent of another process; 0 when it is not known.
  std::function<std::int32_t(std::int32_t pid)> parentOf;
  /// The names that a process holds on the session bus.
  std::function<std::vector<std::string>(const ProcessIdentity& process)> busNamesOf;
};

}  // namespace korvantis
