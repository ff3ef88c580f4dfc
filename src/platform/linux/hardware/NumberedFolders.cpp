#include "platform/linux/hardware/NumberedFolders.h"

#include <algorithm>
#include <utility>

#include "platform/linux/FolderNames.h"
#include "platform/linux/TextFields.h"

namespace korvantis {

int numberWithin(std::string_view name, std::string_view prefix, std::string_view suffix) {
  constexpr std::uint64_t most = 1'000'000;
  if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) ||
      !name.ends_with(suffix)) {
    return -1;
  }
  name.remove_prefix(prefix.size());
  name.remove_suffix(suffix.size());
  const auto number = unsignedNumber(name);
  return number && *number < most ? static_cast<int>(*number) : -1;
}

std::vector<std::string> numberedFolders(const std::string& folder, std::string_view prefix) {
  std::vector<std::pair<int, std::string>> found;
  for (const std::string& name : namesInFolder(folder)) {
    const int number = numberWithin(name, prefix, "");
    if (number >= 0) found.emplace_back(number, folder + "/" + name);
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> paths;
  paths.reserve(found.size());
  for (auto& [number, path] : found) paths.push_back(std::move(path));
  return paths;
}

std::string lastPart(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace korvantis
