#pragma once

#include <optional>

#include "platform/linux/applications/AppImageMount.h"
#include "platform/linux/applications/ApplicationRule.h"

namespace korvantis {

/// An application that a process was found to be part of, and how.
struct ApplicationMatch {
  EntryPointer entry;
  ApplicationRule rule = ApplicationRule::entryExecutable;

  bool operator==(const ApplicationMatch&) const = default;
};

/// Asks the kinds of evidence one after the other; the first that tells an application decides.
/// Any thread.
class ApplicationRules {
 public:
  /// The application of a process by its own evidence; absent when it is part of none, or is of a
  /// kind that must not stand for one: a desktop shell, a session manager, a launcher.
  std::optional<ApplicationMatch> find(ProcessEvidence& process, const ProcessSurroundings& around);

 private:
  AppImageMount appImages;
};

}  // namespace korvantis
