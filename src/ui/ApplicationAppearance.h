#pragma once

#include "state/ApplicationAppearanceCalls.h"

namespace korvantis {

/// How the look of the program reaches its titled windows and the theme. Needs an application
/// object. Main thread.
ApplicationAppearanceCalls applicationAppearanceCalls();

}  // namespace korvantis
