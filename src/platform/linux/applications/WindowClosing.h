#pragma once

#include <cstdint>

namespace korvantis {

/// Asks the window manager of the X display of the environment to close every window of the
/// process `pid` of this machine, as its user would; whether there was any. The program behind
/// them may ask its user first. Blocks, a third of a second at most; false without a display or
/// where the window manager doesn't close windows for others. Any thread.
bool closeWindowsOf(std::int32_t pid);

}  // namespace korvantis
