#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/applications/ApplicationRule.h"
#include "platform/linux/applications/DesktopEntryIndex.h"

namespace korvantis {

/// What is kept of a process that has been looked at, part of an application or not.
struct KnownApplicationProcess {
  std::uint64_t startTicks = 0;
  std::string executable;
  std::string name;
  std::string presentedPath;
  std::int32_t parent = 0;
  /// The application that it is part of, and how that was found; null and absent when none.
  EntryPointer entry;
  std::optional<ApplicationRule> rule;
  bool isMain = false;
  std::string group;
  /// The application that the control group is named after; null when none.
  EntryPointer groupEntry;
  /// The index it was compared with, and the last listing that it stood in.
  std::uint64_t generation = 0;
  std::uint64_t round = 0;
  bool wasYoung = false;
};

}  // namespace korvantis
