#pragma once

#include <functional>
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
