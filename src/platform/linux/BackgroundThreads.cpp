#include <chrono>
#include <thread>
#include <utility>

#include "platform/BackgroundCalls.h"
#include "platform/linux/UtilityThread.h"

namespace korvantis {
namespace {

void detached(std::function<void()> task) {
  // Where the machine has no thread to give, the work is dropped and the program goes on.
  static_cast<void>(startUtilityThread(std::move(task)));
}

void sleepFor(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

}  // namespace

BackgroundCalls systemBackgroundCalls() {
  return {detached, sleepFor};
}

}  // namespace korvantis
