#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "state/MonitorStore.h"

namespace korvantis {

/// What a capture does outside the store. Main thread.
struct CaptureCalls {
  /// Runs `task` on the main thread `seconds` from now.
  std::function<void(double seconds, std::function<void()> task)> asyncAfter;
  /// Draws the content of the main window and writes it to `path` as PNG; failures are ignored.
  std::function<void(const std::string& path)> writePicture;
  /// Shows the settings over a darkened root view instead of the window's content, or the
  /// content again.
  std::function<void(bool shows)> showSettingsComposition;
  /// Ends the program.
  std::function<void()> terminate;
};

/// Renders the product pictures from the running program: five steps with a pause before each,
/// so that the screens settle and ticks go on; then the program ends. Starts at once, dark, with a
/// fresh tick. `folder` is a plain prefix of the five paths. `store` must live until the end.
/// Main thread.
void captureRealProductScreenshots(MonitorStore& store, CaptureCalls calls,
                                   const std::string& folder);

}  // namespace korvantis
