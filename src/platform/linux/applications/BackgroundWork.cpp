#include "platform/linux/applications/BackgroundWork.h"

#include <utility>

#include "platform/linux/UtilityThread.h"

namespace korvantis {

BackgroundWork::~BackgroundWork() {
  std::unique_lock guard(state->lock);
  state->ended.wait(guard, [this] { return !state->isBusy; });
}

void BackgroundWork::start(std::function<void()> work) {
  if (!onThread) return work();
  {
    const std::lock_guard guard(state->lock);
    if (std::exchange(state->isBusy, true)) return;
  }
  // The thread holds the state too: it may still be leaving its lock when the owner goes.
  const bool hasBegun = startUtilityThread([shared = state, work = std::move(work)] {
    work();
    const std::lock_guard guard(shared->lock);
    shared->isBusy = false;
    shared->ended.notify_all();
  });
  if (hasBegun) return;
  // No thread to be had now: the next time it is due it is tried again.
  const std::lock_guard guard(state->lock);
  state->isBusy = false;
}

}  // namespace korvantis
