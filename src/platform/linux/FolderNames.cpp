#include "platform/linux/FolderNames.h"

#include <filesystem>
#include <system_error>

namespace korvantis {

std::vector<std::string> namesInFolder(const std::string& folder) {
  using Iterator = std::filesystem::directory_iterator;
  std::vector<std::string> names;
  std::error_code error;
  for (Iterator entry(folder, error); !error && entry != Iterator(); entry.increment(error)) {
    names.push_back(entry->path().filename().string());
  }
  return names;
}

}  // namespace korvantis
