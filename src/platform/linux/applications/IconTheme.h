#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// What an icon theme's `index.theme` says.
struct IconTheme {
  struct Folder {
    /// Below the theme's own folder.
    std::string name;
    /// Of its icons, in pixels.
    int size = 0;

    bool operator==(const Folder&) const = default;
  };

  /// Themes to look into when this one lacks an icon, best first.
  std::vector<std::string> parents;
  /// Folders for screens of plain density.
  std::vector<Folder> folders;

  bool operator==(const IconTheme&) const = default;
};

/// Reads an `index.theme`. Any thread.
IconTheme parseIconTheme(std::string_view text);

}  // namespace korvantis
