#include "platform/linux/applications/RootedPath.h"

#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

#include "platform/linux/FileText.h"

namespace korvantis {
namespace {

constexpr int mostLinks = 40;

std::optional<std::string> systemPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> found(::realpath(path.c_str(), nullptr),
                                                          &std::free);
  return found ? std::optional<std::string>(found.get()) : std::nullopt;
}

}  // namespace

std::optional<std::string> canonicalPath(const std::string& root, std::string_view path) {
  if (!path.starts_with('/')) return std::nullopt;
  if (root.empty()) return systemPath(std::string(path));
  std::string done;
  std::string left(path);
  int links = 0;
  while (!left.empty()) {
    left.erase(0, left.find_first_not_of('/'));
    const std::size_t end = std::min(left.find('/'), left.size());
    const std::string part = left.substr(0, end);
    left.erase(0, end);
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      done.erase(done.empty() ? 0 : done.rfind('/'));
      continue;
    }
    const std::string place = std::string(done).append("/").append(part);
    struct stat facts {};
    if (::lstat((root + place).c_str(), &facts) != 0) return std::nullopt;
    if (!S_ISLNK(facts.st_mode)) {
      done = place;
      continue;
    }
    const auto target = readLinkText(AT_FDCWD, root + place);
    if (!target || ++links > mostLinks) return std::nullopt;
    left.insert(0, *target + "/");
    if (target->starts_with('/')) done.clear();
  }
  return done.empty() ? "/" : done;
}

std::string_view baseNameOf(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

std::string_view folderOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

}  // namespace korvantis
