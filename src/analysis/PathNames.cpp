#include "analysis/PathNames.h"

#include <algorithm>
#include <cstddef>

namespace korvantis {

std::string_view nameWithoutExtension(std::string_view path) {
  const std::string_view name = lastPathComponent(path);
  if (name == "/") return {};
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

std::string_view lastPathComponent(std::string_view path) {
  const std::size_t end = path.find_last_not_of('/');
  if (end == std::string_view::npos) return path.substr(0, 1);
  std::string_view name = path.substr(0, end + 1);
  name.remove_prefix(name.rfind('/') + 1);  // No slash is npos, and npos + 1 removes nothing.
  return name;
}

std::string parentPath(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return std::string(slash == 0 || slash == std::string_view::npos ? "/" : path.substr(0, slash));
}

std::string standardizedPath(std::string_view path) {
  if (!path.starts_with('/')) return std::string(path);
  std::string standard;
  while (!path.empty()) {
    path.remove_prefix(1);  // The slash in front of the component.
    const std::string_view component = path.substr(0, path.find('/'));
    path.remove_prefix(component.size());
    if (component == "..") {
      standard.erase(std::min(standard.rfind('/'), standard.size()));
    } else if (!component.empty() && component != ".") {
      standard.append("/").append(component);
    }
  }
  return standard.empty() ? "/" : standard;
}

}  // namespace korvantis
