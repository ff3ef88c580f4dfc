#pragma once

#include <functional>

#include "platform/AppearanceCalls.h"

namespace korvantis {

/// The desktop's look: on Linux what the desktop's portal or settings say, elsewhere what the
/// colours tell. False while there is no application object.
AppearanceCalls qtAppearanceCalls();

/// Calls `changed` on the main thread whenever that look changes, until the application object is
/// gone. Does nothing while there is none.
void observeQtSystemTheme(std::function<void()> changed);

/// The look judged by the colours that the desktop gives to windows: dark when a window is darker
/// than the text on it. False while there is no application object with a display.
AppearanceCalls qtPaletteAppearanceCalls();

/// Calls `changed` on the main thread whenever the desktop gives the application other colours,
/// until the application object is gone. Does nothing while there is none.
void observeQtPalette(std::function<void()> changed);

}  // namespace korvantis
