#include "platform/linux/applications/PrivateFolders.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <sys/stat.h>

#include "platform/linux/applications/IndexedEntry.h"
#include "platform/linux/applications/KnownPrograms.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

/// Where packages put a folder for each application.
constexpr std::array<std::string_view, 8> packagePlaces{
    "/opt",           "/usr/lib",       "/usr/lib64", "/usr/libexec",
    "/usr/local/lib", "/usr/local/opt", "/usr/share", "/usr/local/share"};

constexpr std::array<std::string_view, 4> namedPlaces{"/usr/lib", "/usr/share", "/opt",
                                                      "/usr/libexec"};

/// Folders in those places that belong to a language or a toolkit, or are shared otherwise.
constexpr std::array<std::string_view, 16> sharedNames{
    "bin",  "sbin",         "games",  "lib",   "lib64",        "libexec", "jvm", "python3",
    "ruby", "node_modules", "nodejs", "perl5", "applications", "systemd", "qt5", "qt6"};

template <typename Names>
bool holds(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool isLike(std::string_view name, const std::vector<std::string>& stems) {
  const std::string stem = programStem(name);
  return std::any_of(stems.begin(), stems.end(),
                     [&stem](const std::string& own) { return stemsAreAlike(stem, own); });
}

/// The first folder below a place of packages on the way to `folder`; empty when there is none.
std::string_view packageFolder(std::string_view folder) {
  for (const std::string_view place : packagePlaces) {
    if (folder.size() <= place.size() + 1 || !folder.starts_with(place)) continue;
    if (folder[place.size()] != '/') continue;
    return folder.substr(0, folder.find('/', place.size() + 1));
  }
  return {};
}

/// "x86_64-linux-gnu": one for each architecture, shared by all packages.
bool isArchitecture(std::string_view name) {
  return name.find("-linux-") != std::string_view::npos;
}

bool isPrivate(std::string_view folder, const std::vector<std::string>& stems) {
  const std::string_view package = packageFolder(folder);
  // Anywhere else, such as in a home, only the name tells.
  if (package.empty()) {
    return std::count(folder.begin(), folder.end(), '/') > 1 && isLike(baseNameOf(folder), stems);
  }
  if (holds(sharedNames, baseNameOf(folder))) return false;
  const std::string_view owner = baseNameOf(package);
  const bool isShared = isArchitecture(owner) || holds(sharedNames, owner);
  return !isShared || (folder != package && isLike(baseNameOf(folder), stems));
}

bool isExecutableFile(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && (facts.st_mode & 0111) != 0;
}

bool hasPartLike(std::string_view path, const std::vector<std::string>& stems) {
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    if (isLike(path.substr(0, end), stems)) return true;
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return false;
}

}  // namespace

std::vector<std::string> PrivateFolders::around(std::string_view program,
                                                const std::vector<std::string>& stems) {
  std::vector<std::string> folders;
  const std::string_view own = folderOf(program);
  if (isPrivate(own, stems)) folders.emplace_back(own);
  if (baseNameOf(own) == "bin" && isPrivate(folderOf(own), stems)) {
    folders.emplace_back(folderOf(own));
  }
  return folders;
}

std::vector<std::string> PrivateFolders::named(const std::vector<std::string>& stems) const {
  std::vector<std::string> folders;
  for (const std::string& stem : stems) {
    for (const std::string_view place : namedPlaces) {
      if (holds(sharedNames, stem)) continue;
      const std::string folder = std::string(place).append("/").append(stem);
      if (isExecutableFile(root + folder + "/" + stem)) folders.push_back(folder);
    }
  }
  return folders;
}

std::vector<std::string> PrivateFolders::inScript(const std::vector<std::string>& paths,
                                                  const std::vector<std::string>& stems) const {
  std::vector<std::string> folders;
  for (const std::string& path : paths) {
    if (!hasPartLike(path, stems) || KnownPrograms::isInterpreter(baseNameOf(path))) continue;
    const auto canonical = canonicalPath(root, path);
    if (!canonical) continue;
    if (isExecutableFile(root + *canonical)) {
      for (std::string& folder : around(*canonical, stems)) folders.push_back(std::move(folder));
    } else if (isLike(baseNameOf(*canonical), stems) && isPrivate(*canonical, stems)) {
      struct stat facts {};
      const bool isFolder =
          ::stat((root + *canonical).c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
      if (isFolder) folders.push_back(*canonical);
    }
  }
  return folders;
}

}  // namespace korvantis
