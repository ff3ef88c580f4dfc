#pragma once

#include <functional>

namespace korvantis {

/// Work that must not hold up the main thread.
struct BackgroundCalls {
  /// Runs `task` once on a thread of its own, at a priority below that of what the user waits for
  /// (`Task.detached(priority: .utility)`), and comes back at once. Any thread.
  std::function<void(std::function<void()> task)> detached = [](const std::function<void()>&) {};
  /// Holds the calling thread (`Thread.sleep`). Any thread but the main one.
  std::function<void(double seconds)> sleep = [](double) {};
};

/// The operating system's own answers.
BackgroundCalls systemBackgroundCalls();

}  // namespace korvantis
