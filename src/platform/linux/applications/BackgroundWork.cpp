#include "platform/linux/applications/BackgroundWork.h"

#include <system_error>
#include <utility>

#include "platform/linux/UtilityThread.h"

namespace korvantis {

BackgroundWork::~BackgroundWork() {
  if (worker.joinable()) worker.join();
}

void BackgroundWork::start(std::function<void()> work) {
  if (!onThread) return work();
  const std::lock_guard guard(lock);
  if (std::exchange(isBusy, true)) return;
  // It has ended, or ends without needing the lock again.
  if (worker.joinable()) worker.join();
  try {
    worker = std::thread([this, work = std::move(work)] {
      yieldToOthers();
      work();
      const std::lock_guard done(lock);
      isBusy = false;
    });
  } catch (const std::system_error&) {
    // No thread to be had now: the next time it is due it is tried again.
    isBusy = false;
  }
}

}  // namespace korvantis
