#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "platform/MainRunLoopCalls.h"

namespace korvantis::test {

/// A main run loop whose time only moves when a test says so.
class ScriptedRunLoop {
 public:
  struct Timer {
    double period = 0;
    double due = 0;
    std::function<void()> fire;
    bool isValid = true;
  };
  struct DelayedTask {
    double delay = 0;
    double due = 0;
    std::function<void()> run;
  };

  /// Every timer ever scheduled, those invalidated included.
  std::vector<std::shared_ptr<Timer>> timers;
  /// What waits for its time.
  std::deque<DelayedTask> delayedTasks;
  /// What waits for the main thread.
  std::deque<std::function<void()>> tasks;
  /// Seconds since the loop was made.
  double time = 0;

  MainRunLoopCalls calls();

  /// Lets that much time pass: what falls due runs at its moment, and the tasks after it.
  void advance(double seconds);

  /// Runs the tasks that wait for the main thread, and those that they add.
  void runTasks();

 private:
  /// The earliest moment at which something is due; `limit` when nothing is before that.
  double nextDue(double limit) const;
  void fireWhatIsDue();
};

}  // namespace korvantis::test
