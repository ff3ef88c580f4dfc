#include "analysis/PathNames.h"

#include <cstddef>

namespace korvantis {

std::string_view nameWithoutExtension(std::string_view path) {
  const std::size_t end = path.find_last_not_of('/');
  if (end == std::string_view::npos) return {};
  std::string_view name = path.substr(0, end + 1);
  name.remove_prefix(name.rfind('/') + 1);  // No slash is npos, and npos + 1 removes nothing.
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

}  // namespace korvantis
