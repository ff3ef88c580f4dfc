#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/RunningApplicationCalls.h"
#include "platform/linux/applications/LinuxApplications.h"

namespace korvantis {

/// The ways in which an application can be asked or made to end. A test scripts them.
struct QuitWays {
  /// Over the session bus: whether the process took the request.
  std::function<bool(const std::string& id, std::int32_t pid)> overBus;
  /// As its user would: whether it had a window to close.
  std::function<bool(std::int32_t pid)> byWindows;
  /// Sends a signal to that process and no other; 0 on success.
  std::function<int(std::int32_t pid, int signal)> signal;
  /// Whether this user may send signals to the process. Another user's copy of an application is
  /// none of ours.
  std::function<bool(std::int32_t pid)> mayReach;
  /// Whether the process that was known is still the one with its number.
  std::function<bool(const ProcessIdentity& process)> isThere;
};

/// Running applications as the engine stops them. Politely: over the session bus, else by closing
/// the windows; where neither is to be had the request is not accepted. By force: signal 9 to the
/// process itself. An application answers by its root process alone.
RunningApplicationCalls linuxRunningApplications(
    const std::shared_ptr<LinuxApplications>& applications, QuitWays ways);

}  // namespace korvantis
