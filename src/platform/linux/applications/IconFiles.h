#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/linux/applications/IconTheme.h"

namespace korvantis {

/// Finds the files of icons that desktop entries name: in the user's theme and those that it is
/// built on, in "hicolor", and in the folder of pixmaps. A PNG of 48 pixels goes first, then an
/// SVG, then the PNG whose size is nearest to that, larger ones before smaller ones. What was found
/// is remembered, and what was not for a minute. Any thread.
class IconFiles {
 public:
  /// Where icons are looked for.
  struct Places {
    /// The folder that stands for "/".
    std::string root;
    /// The user's theme; empty for none.
    std::string theme;
    /// Folders of themes, best first.
    std::vector<std::string> themeFolders;
    /// Folders of icons without a theme.
    std::vector<std::string> pixmapFolders;
  };

  explicit IconFiles(Places iconPlaces) : places(std::move(iconPlaces)) {}

  /// The file of the icon with this name, or this absolute path; absent when there is none that is
  /// a PNG or an SVG. `now`: seconds that never go back.
  std::optional<std::string> find(const std::string& name, double now);

  /// The file of the icon of the application whose bundle is presented at `bundlePath`, by its
  /// desktop entry; absent when there is none.
  std::optional<std::string> ofBundle(const std::string& bundlePath, double now);

 private:
  struct Found {
    std::optional<std::string> file;
    double lookedAt = 0;
  };

  std::optional<std::string> lookFor(const std::string& name);
  std::vector<std::string> themeChain();
  IconTheme theme(const std::string& name);
  std::optional<std::string> inTheme(const std::string& themeName, const std::string& name);
  bool isFile(const std::string& path) const;

  const Places places;
  std::mutex lock;
  std::unordered_map<std::string, Found> found;
  std::unordered_map<std::string, IconTheme> themes;
};

/// The running system's places, by its environment and the user's settings for GTK or KDE.
IconFiles::Places systemIconPlaces();

}  // namespace korvantis
