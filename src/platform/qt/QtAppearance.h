#pragma once

#include <functional>

#include "platform/AppearanceCalls.h"

namespace korvantis {

/// The desktop's look, judged by the colours that it gives to windows: dark when a window is
/// darker than the text on it. False while there is no application object with a display.
AppearanceCalls qtAppearanceCalls();

/// Calls `changed` on the main thread whenever the desktop gives the application other colours,
/// until the application object is gone. Does nothing while there is none.
void observeQtSystemTheme(std::function<void()> changed);

}  // namespace korvantis
