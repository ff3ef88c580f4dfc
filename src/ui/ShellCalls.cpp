#include "ui/ShellCalls.h"

#include <QCoreApplication>
#include <chrono>

#include "engine/OstrelEngine.h"
#include "platform/ProcessStart.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtMainRunLoop.h"
#include "platform/qt/QtUserDefaults.h"
#include "ui/ApplicationAppearance.h"

namespace korvantis {
namespace {

MonitorStoreCalls monitorStoreCalls() {
  MonitorStoreCalls calls;
  calls.engine = monitorEngineCalls(OstrelEngine::shared());
  calls.mainRunLoop = qtMainRunLoopCalls();
  calls.clock = systemClock();
  calls.userDefaults = qtUserDefaultsCalls();
  calls.appearance = qtAppearanceCalls();
  calls.applicationAppearance = applicationAppearanceCalls();
  calls.processStart = systemProcessStart;
  calls.audio = systemAudioObjectCalls();
  calls.background = systemBackgroundCalls();
  calls.tasks = systemTaskCalls();
  calls.http = systemHTTPCalls();
  calls.workspace = systemWorkspaceCalls();
  calls.activateFileViewerSelectingURLs = calls.workspace.activateFileViewerSelectingURLs;
  return calls;
}

double secondsSinceStart() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

}  // namespace

ShellCalls systemShellCalls() {
  return {monitorStoreCalls(), systemStatusItemCalls(), secondsSinceStart,
          [] { QCoreApplication::quit(); }};
}

}  // namespace korvantis
