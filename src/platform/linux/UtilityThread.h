#pragma once

#include <functional>

namespace korvantis {

/// Lets the calling thread yield to what the user is waiting for: nice 10, unless it yields more
/// already. On this system each thread has a niceness of its own. Any thread.
void yieldToOthers();

/// Runs `work` once on a thread of its own that yields to others, and comes back at once; false,
/// and nothing is run, when the system has no thread to give. `work` may not throw. Any thread.
bool startUtilityThread(std::function<void()> work);

/// The same on a thread of the usual priority: programs that are started there inherit it. Any
/// thread.
bool startThread(std::function<void()> work);

}  // namespace korvantis
