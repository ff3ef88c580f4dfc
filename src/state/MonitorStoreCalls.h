#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/AppearanceCalls.h"
#include "platform/AudioObjectCalls.h"
#include "platform/BackgroundCalls.h"
#include "platform/Clock.h"
#include "platform/HTTPCalls.h"
#include "platform/MainRunLoopCalls.h"
#include "platform/TaskCalls.h"
#include "platform/UserDefaultsCalls.h"
#include "platform/WorkspaceCalls.h"
#include "state/ApplicationAppearanceCalls.h"
#include "state/MonitorEngineCalls.h"

namespace korvantis {

/// Everything that `MonitorStore` and the stores that it owns need from outside. A test scripts
/// them all. Main thread.
struct MonitorStoreCalls {
  MonitorEngineCalls engine;
  MainRunLoopCalls mainRunLoop;
  Clock clock;
  UserDefaultsCalls userDefaults;
  AppearanceCalls appearance;
  ApplicationAppearanceCalls applicationAppearance;
  /// When the process that has a number now began, in whole seconds since 1970; absent when there
  /// is none. When empty, a number is taken for the process that was shown under it.
  std::function<std::optional<double>(std::int32_t pid)> processStart;
  AudioObjectCalls audio;
  BackgroundCalls background;
  TaskCalls tasks;
  HTTPCalls http;
  WorkspaceCalls workspace;
  /// Shows the files at these paths selected in the file manager, in this order
  /// (`NSWorkspace` `activateFileViewerSelectingURLs`). When empty, nothing is shown.
  std::function<void(const std::vector<std::string>& paths)> activateFileViewerSelectingURLs;
};

}  // namespace korvantis
