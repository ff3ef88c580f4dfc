#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace korvantis {

/// The look of a window: the named appearance and the colour behind its content.
struct WindowAppearance {
  bool isDark = true;
  /// Red, green and blue of the opaque background, 0 to 255.
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const WindowAppearance&) const = default;
};

/// One window of the application.
struct ApplicationWindow {
  /// It has a title bar; popovers and the status item's panels have none.
  bool isTitled = false;
  /// Gives it that look.
  std::function<void(const WindowAppearance&)> setAppearance;
};

/// What the chosen look is pushed onto. The shell answers these; a member left empty does
/// nothing, which is how it is before the application object exists. Main thread.
struct ApplicationAppearanceCalls {
  /// Writes the global flag that every colour of the theme reads.
  std::function<void(bool isDark)> setThemeIsDark;
  /// Lets the application object itself follow the system.
  std::function<void()> clearApplicationAppearance;
  /// The windows that exist now, titled or not.
  std::function<std::vector<ApplicationWindow>()> windows;
  /// Has `changed` called, on any thread, whenever the system's theme changes, for as long as the
  /// program runs.
  std::function<void(std::function<void()> changed)> observeSystemTheme;
};

}  // namespace korvantis
