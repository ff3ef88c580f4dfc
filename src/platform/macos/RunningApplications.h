#pragma once

#include "platform/RunningApplicationCalls.h"

namespace korvantis {

/// The running applications that `NSRunningApplication` knows.
RunningApplicationCalls systemRunningApplicationCalls();

}  // namespace korvantis
