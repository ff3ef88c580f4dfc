#include "platform/linux/applications/IconTheme.h"

#include <algorithm>
#include <cstdint>
#include <map>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

using Group = std::map<std::string, std::string, std::less<>>;

constexpr std::uint64_t largestSize = 4096;

std::vector<std::string> listed(std::string_view text) {
  std::vector<std::string> items;
  while (!text.empty()) {
    const std::size_t comma = std::min(text.find(','), text.size());
    if (comma > 0) items.emplace_back(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 1, text.size()));
  }
  return items;
}

std::map<std::string, Group, std::less<>> groupsOf(std::string_view text) {
  std::map<std::string, Group, std::less<>> groups;
  Group* current = nullptr;
  while (!text.empty()) {
    std::string_view line = takeLine(text);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.starts_with('[') && line.ends_with(']')) {
      current = &groups[std::string(line.substr(1, line.size() - 2))];
    }
    const std::size_t equals = line.find('=');
    if (current == nullptr || equals == std::string_view::npos || line.starts_with('#')) continue;
    current->try_emplace(std::string(line.substr(0, equals)), line.substr(equals + 1));
  }
  return groups;
}

std::string_view valueOf(const Group& group, std::string_view key) {
  const auto found = group.find(key);
  return found == group.end() ? std::string_view() : std::string_view(found->second);
}

}  // namespace

IconTheme parseIconTheme(std::string_view text) {
  IconTheme theme;
  const auto groups = groupsOf(text);
  const auto own = groups.find("Icon Theme");
  if (own == groups.end()) return theme;
  theme.parents = listed(valueOf(own->second, "Inherits"));
  for (std::string& name : listed(valueOf(own->second, "Directories"))) {
    const auto folder = groups.find(name);
    if (folder == groups.end()) continue;
    const auto size = unsignedNumber(valueOf(folder->second, "Size"));
    const std::string_view scale = valueOf(folder->second, "Scale");
    const bool isPlain = scale.empty() || scale == "1";
    if (!size || *size > largestSize || !isPlain || name.find("..") != std::string::npos) continue;
    theme.folders.push_back({std::move(name), static_cast<int>(*size)});
  }
  return theme;
}

}  // namespace korvantis
