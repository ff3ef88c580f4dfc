#pragma once

#include "platform/MainRunLoopCalls.h"

namespace korvantis {

/// Time and tasks on the thread of the application object. Timers are precise to the
/// millisecond, and none is shorter than that. What is asked for while there is no application
/// object, and what is still waiting when it goes, never runs.
MainRunLoopCalls qtMainRunLoopCalls();

}  // namespace korvantis
