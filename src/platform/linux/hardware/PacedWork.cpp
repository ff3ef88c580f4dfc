#include "platform/linux/hardware/PacedWork.h"

#include <system_error>
#include <utility>

#include "platform/linux/UtilityThread.h"

namespace korvantis {

PacedWork::PacedWork(bool background, std::function<double()> seconds, double interval,
                     std::function<void()> task)
    : inBackground(background),
      monotonicSeconds(std::move(seconds)),
      pace(interval),
      work(std::move(task)) {}

PacedWork::~PacedWork() {
  {
    const std::scoped_lock guard(lock);
    stopping = true;
  }
  changed.notify_all();
  if (thread.joinable()) thread.join();
}

bool PacedWork::begin() {
  const double now = monotonicSeconds();
  const std::scoped_lock guard(lock);
  if (begunAt && now - *begunAt < pace) return false;
  begunAt = now;
  if (!inBackground) return true;
  wanted = true;
  if (thread.joinable()) return true;
  try {
    thread = std::thread([this] { serve(); });
  } catch (const std::system_error&) {
    // No thread to be had: the next question tries again.
    wanted = false;
  }
  return true;
}

void PacedWork::ask() {
  if (!begin()) return;
  if (inBackground) {
    changed.notify_one();
  } else {
    work();
  }
}

void PacedWork::serve() {
  yieldToOthers();
  std::unique_lock guard(lock);
  for (;;) {
    changed.wait(guard, [this] { return wanted || stopping; });
    if (stopping) return;
    wanted = false;
    guard.unlock();
    work();
    guard.lock();
  }
}

}  // namespace korvantis
