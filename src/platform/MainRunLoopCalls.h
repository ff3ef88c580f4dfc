#pragma once

#include <functional>

namespace korvantis {

/// A timer that fires again and again until `invalidate` is called. Main thread.
struct RepeatingTimer {
  std::function<void()> invalidate;
};

/// Time and tasks on the main thread. `async` may be called from any thread, the others from
/// the main thread only.
struct MainRunLoopCalls {
  /// Calls `fire` every `seconds` on the main run loop, first after one whole period.
  std::function<RepeatingTimer(double seconds, std::function<void()> fire)> scheduleRepeatingTimer;

  /// Runs `task` on the main thread as soon as it is free; never inside this call.
  std::function<void(std::function<void()> task)> async;

  /// Runs `task` on the main thread `seconds` from now.
  std::function<void(double seconds, std::function<void()> task)> asyncAfter;
};

}  // namespace korvantis
