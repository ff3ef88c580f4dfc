#include "state/ScriptedRunLoop.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace korvantis::test {

MainRunLoopCalls ScriptedRunLoop::calls() {
  return {.scheduleRepeatingTimer =
              [this](double seconds, std::function<void()> fire) {
                auto timer =
                    std::make_shared<Timer>(Timer{seconds, time + seconds, std::move(fire), true});
                timers.push_back(timer);
                return RepeatingTimer{[timer] { timer->isValid = false; }};
              },
          .async = [this](std::function<void()> task) { tasks.push_back(std::move(task)); },
          .asyncAfter =
              [this](double seconds, std::function<void()> task) {
                delayedTasks.push_back({seconds, time + seconds, std::move(task)});
              }};
}

void ScriptedRunLoop::advance(double seconds) {
  const double end = time + seconds;
  while (true) {
    const double next = nextDue(end);
    time = next;
    fireWhatIsDue();
    if (next >= end) return;
  }
}

double ScriptedRunLoop::nextDue(double limit) const {
  double next = limit;
  for (const auto& timer : timers) {
    if (timer->isValid) next = std::min(next, timer->due);
  }
  for (const auto& task : delayedTasks) next = std::min(next, task.due);
  return next;
}

void ScriptedRunLoop::fireWhatIsDue() {
  // By index, since what fires may schedule more.
  for (std::size_t index = 0; index < timers.size(); ++index) {
    const auto timer = timers[index];
    if (!timer->isValid || timer->due > time) continue;
    timer->due += timer->period;
    timer->fire();
    runTasks();
  }
  std::deque<DelayedTask> waiting;
  std::swap(waiting, delayedTasks);
  for (DelayedTask& task : waiting) {
    if (task.due > time) {
      delayedTasks.push_back(std::move(task));
      continue;
    }
    task.run();
    runTasks();
  }
}

void ScriptedRunLoop::runTasks() {
  while (!tasks.empty()) {
    const auto task = std::move(tasks.front());
    tasks.pop_front();
    task();
  }
}

}  // namespace korvantis::test
