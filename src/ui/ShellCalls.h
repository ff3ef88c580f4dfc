#pragma once

#include <functional>

#include "platform/StatusItemCalls.h"
#include "state/MonitorStoreCalls.h"

namespace korvantis {

/// Everything that the shell needs from outside. A test scripts it all. Main thread.
struct ShellCalls {
  MonitorStoreCalls store;
  StatusItemCalls statusItem;
  /// Seconds that never go back.
  std::function<double()> uptime;
  /// Ends the program.
  std::function<void()> terminate;
};

/// The desktop's own answers over the one real engine, which is made on the first call. Needs an
/// application object.
ShellCalls systemShellCalls();

}  // namespace korvantis
