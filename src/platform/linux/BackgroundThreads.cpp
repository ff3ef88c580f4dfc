#include <chrono>
#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/BackgroundCalls.h"

namespace korvantis {
namespace {

/// What stands for the utility priority here. On Linux niceness belongs to a thread.
constexpr int utilityNiceness = 10;

void runAtUtilityPriority(const std::function<void()>& task) {
  // A refusal only means that the work runs at the usual priority.
  static_cast<void>(::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), utilityNiceness));
  task();
}

void detached(std::function<void()> task) {
  try {
    std::thread([task = std::move(task)] { runAtUtilityPriority(task); }).detach();
  } catch (const std::system_error&) {
    // The machine has no thread to give: the work is dropped, the program goes on.
  }
}

void sleepFor(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

}  // namespace

BackgroundCalls systemBackgroundCalls() {
  return {detached, sleepFor};
}

}  // namespace korvantis
