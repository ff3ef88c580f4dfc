#pragma once

#include <functional>
#include <optional>
#include <string>

namespace korvantis {

/// The pictures by which the desktop shows applications (`NSWorkspace`). Main thread.
struct IconCalls {
  /// True when anything stands at `path`; on Linux also where a desktop application is presented
  /// as a bundle.
  std::function<bool(const std::string& path)> fileExistsAtPath;
  /// The icon of what stands at `path` (`iconForFile:`) as the bytes of a PNG or an SVG file;
  /// absent where the desktop has none for it.
  std::function<std::optional<std::string>(const std::string& path)> iconForFile;
};

/// The desktop's own pictures. Ask once and copy the struct: its operations share what they
/// remember.
IconCalls systemIconCalls();

}  // namespace korvantis
