#pragma once

#include <functional>

namespace korvantis {

/// What the desktop looks like. Main thread.
struct AppearanceCalls {
  /// True when the desktop is set to a dark look; false when it is not or does not say.
  std::function<bool()> detectSystemDarkMode;
};

}  // namespace korvantis
