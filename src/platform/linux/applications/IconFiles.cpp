#include "platform/linux/applications/IconFiles.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <utility>

#include "platform/linux/FileText.h"
#include "platform/linux/TextFields.h"
#include "platform/linux/UserFolders.h"
#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr int wantedSize = 48;
constexpr double missLife = 60;
constexpr std::size_t mostThemes = 16;
constexpr std::size_t longestIndex = 1 << 20;
constexpr std::array<std::string_view, 2> extensions{".png", ".svg"};

bool hasKnownExtension(std::string_view name) {
  return std::any_of(extensions.begin(), extensions.end(),
                     [name](std::string_view extension) { return name.ends_with(extension); });
}

/// How far a picture is from the one that is wanted: the lower the better.
auto distance(int size, std::string_view extension) {
  const bool isVector = extension == ".svg";
  const bool isExact = !isVector && size == wantedSize;
  const bool isSmaller = !isVector && size < wantedSize;
  return std::tuple(!isExact, !isVector, isSmaller, std::abs(size - wantedSize));
}

/// The value of a key in a settings file, whatever group it stands in.
std::string setting(const std::string& file, std::string_view key) {
  const FileText settings = readFileText(AT_FDCWD, file);
  std::string_view text = settings.text;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == '=') {
      return std::string(line.substr(key.size() + 1));
    }
  }
  return {};
}

}  // namespace

bool IconFiles::isFile(const std::string& path) const {
  const auto canonical = canonicalPath(places.root, path);
  struct stat facts {};
  return canonical && ::stat((places.root + *canonical).c_str(), &facts) == 0 &&
         S_ISREG(facts.st_mode);
}

std::optional<std::string> IconFiles::find(const std::string& name, double now) {
  if (name.empty()) return std::nullopt;
  {
    const std::lock_guard guard(lock);
    const auto known = found.find(name);
    const bool isKnown =
        known != found.end() && (known->second.file || now - known->second.lookedAt < missLife);
    if (isKnown) return known->second.file;
  }
  auto file = lookFor(name);
  const std::lock_guard guard(lock);
  found.insert_or_assign(name, Found{file, now});
  return file;
}

std::optional<std::string> IconFiles::lookFor(const std::string& name) {
  if (name.starts_with('/')) {
    return hasKnownExtension(name) && isFile(name) ? std::optional(name) : std::nullopt;
  }
  if (name.find('/') != std::string::npos) return std::nullopt;
  // Some entries name a file of the folder of pixmaps.
  const std::string plain = hasKnownExtension(name) ? name.substr(0, name.size() - 4) : name;
  for (const std::string& themeName : themeChain()) {
    if (auto file = inTheme(themeName, plain)) return file;
  }
  for (const std::string& folder : places.pixmapFolders) {
    for (const std::string_view extension : extensions) {
      const std::string file = (folder + "/").append(plain).append(extension);
      if (isFile(file)) return file;
    }
  }
  return std::nullopt;
}

std::vector<std::string> IconFiles::themeChain() {
  std::vector<std::string> chain;
  if (!places.theme.empty()) chain.push_back(places.theme);
  for (std::size_t index = 0; index < chain.size() && chain.size() < mostThemes; ++index) {
    for (std::string& parent : theme(chain[index]).parents) {
      const bool isNew = std::find(chain.begin(), chain.end(), parent) == chain.end();
      if (isNew && parent != "hicolor") chain.push_back(std::move(parent));
    }
  }
  chain.emplace_back("hicolor");
  return chain;
}

IconTheme IconFiles::theme(const std::string& name) {
  {
    const std::lock_guard guard(lock);
    const auto known = themes.find(name);
    if (known != themes.end()) return known->second;
  }
  IconTheme read;
  const bool isName = name.find('/') == std::string::npos;
  for (auto folder = places.themeFolders.begin(); isName && folder != places.themeFolders.end();
       ++folder) {
    const auto file = canonicalPath(places.root, *folder + "/" + name + "/index.theme");
    if (!file) continue;
    read = parseIconTheme(readFileText(AT_FDCWD, places.root + *file, longestIndex).text);
    break;
  }
  const std::lock_guard guard(lock);
  return themes.emplace(name, std::move(read)).first->second;
}

std::optional<std::string> IconFiles::inTheme(const std::string& themeName,
                                              const std::string& name) {
  const IconTheme read = theme(themeName);
  std::vector<std::pair<const IconTheme::Folder*, std::string_view>> choices;
  for (const IconTheme::Folder& folder : read.folders) {
    for (const std::string_view extension : extensions) choices.emplace_back(&folder, extension);
  }
  std::stable_sort(choices.begin(), choices.end(), [](const auto& first, const auto& second) {
    return distance(first.first->size, first.second) < distance(second.first->size, second.second);
  });
  for (const auto& [folder, extension] : choices) {
    for (const std::string& place : places.themeFolders) {
      std::string file = place + "/" + themeName + "/" + folder->name + "/" + name;
      file.append(extension);
      if (isFile(file)) return file;
    }
  }
  return std::nullopt;
}

std::optional<std::string> IconFiles::ofBundle(const std::string& bundlePath, double now) {
  constexpr std::string_view bundleExtension = ".app";
  if (!bundlePath.ends_with(bundleExtension)) return std::nullopt;
  const std::string entryPath =
      bundlePath.substr(0, bundlePath.size() - bundleExtension.size()) + ".desktop";
  const auto file = canonicalPath(places.root, entryPath);
  if (!file) return std::nullopt;
  const auto entry =
      parseDesktopEntry(readFileText(AT_FDCWD, places.root + *file, longestIndex).text, {});
  if (!entry || entry->icon.empty()) return std::nullopt;
  // An application that brings its own mount has its icon beside its entry.
  for (const std::string_view extension : extensions) {
    const std::string beside =
        std::string(folderOf(entryPath)).append("/").append(entry->icon).append(extension);
    if (entry->icon.find('/') == std::string::npos && isFile(beside)) return beside;
  }
  return find(entry->icon, now);
}

IconFiles::Places systemIconPlaces() {
  constexpr std::string_view entries = "/applications";
  IconFiles::Places places;
  places.themeFolders.push_back(homeFolder() + "/.icons");
  for (const std::string& folder : systemApplicationSources().entryFolders) {
    const std::string data = folder.substr(0, folder.size() - entries.size());
    places.themeFolders.push_back(data + "/icons");
    places.pixmapFolders.push_back(data + "/pixmaps");
  }
  const char* configured = std::getenv("XDG_CONFIG_HOME");
  const std::string configuration =
      configured != nullptr && configured[0] == '/' ? configured : homeFolder() + "/.config";
  places.theme = setting(configuration + "/gtk-3.0/settings.ini", "gtk-icon-theme-name");
  if (places.theme.empty()) places.theme = setting(configuration + "/kdeglobals", "Theme");
  if (places.theme.empty()) places.theme = "Adwaita";
  return places;
}

}  // namespace korvantis
