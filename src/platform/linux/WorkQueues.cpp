#include <memory>
#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/WorkQueueCalls.h"

namespace korvantis {
namespace {

constexpr int utilityNiceness = 10;

/// On this system each thread has a niceness of its own, and 0 names the calling one.
void yieldToOthers() {
  if (::getpriority(PRIO_PROCESS, 0) < utilityNiceness) {
    ::setpriority(PRIO_PROCESS, 0, utilityNiceness);
  }
}

}  // namespace

WorkQueueCalls systemWorkQueueCalls() {
  WorkQueueCalls calls;
  calls.asyncUtility = [](std::function<void()> work) {
    try {
      std::thread([work = std::move(work)] {
        yieldToOthers();
        work();
      }).detach();
    } catch (const std::system_error&) {
      // No thread to be had: the work is dropped.
      return;
    }
  };
  return calls;
}

}  // namespace korvantis
