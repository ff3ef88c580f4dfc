#pragma once

#include <functional>

namespace korvantis {

/// Work beside the main thread.
struct WorkQueueCalls {
  /// `dispatch_async` to the global queue of utility priority: runs `work` once, on another thread
  /// that yields to what the user is waiting for, and comes back at once. Work may take as long as
  /// the program lives, and may not throw. False, and it is dropped, when the system has no
  /// thread to give. Any thread.
  std::function<bool(std::function<void()> work)> asyncUtility;
};

/// The operating system's own queues.
WorkQueueCalls systemWorkQueueCalls();

}  // namespace korvantis
