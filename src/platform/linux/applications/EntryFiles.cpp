#include "platform/linux/applications/EntryFiles.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <sys/stat.h>
#include <unordered_set>

#include "platform/linux/FolderNames.h"

namespace korvantis {
namespace {

constexpr std::size_t mostFiles = 20'000;
constexpr int deepestFolder = 4;
constexpr std::string_view extension = ".desktop";

struct Facts {
  bool isFolder = false;
  std::int64_t changedAt = 0;
};

Facts factsOf(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return {};
  const std::int64_t changedAt =
      std::int64_t{facts.st_mtim.tv_sec} * 1'000'000'000 + facts.st_mtim.tv_nsec;
  return {S_ISDIR(facts.st_mode), changedAt};
}

class Lister {
 public:
  explicit Lister(const std::string& rootFolder) : root(rootFolder) {}

  void addFolder(const std::string& folder, const std::string& prefix, int depth) {
    const Facts facts = factsOf(root + folder);
    found.changeTimes.emplace_back(folder, facts.changedAt);
    if (!facts.isFolder || depth > deepestFolder) return;
    std::vector<std::string> names = namesInFolder(root + folder);
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
      const std::string path = folder + "/" + name;
      if (name.ends_with(extension)) {
        addFile(prefix + name.substr(0, name.size() - extension.size()), path);
      } else if (name.find('.') == std::string::npos && factsOf(root + path).isFolder) {
        addFolder(path, prefix + name + "-", depth + 1);
      }
    }
  }

  EntryFiles found;

 private:
  void addFile(const std::string& id, const std::string& path) {
    if (found.files.size() >= mostFiles || !ids.insert(id).second) return;
    found.files.push_back({id, path});
    found.changeTimes.emplace_back(path, factsOf(root + path).changedAt);
  }

  const std::string& root;
  std::unordered_set<std::string> ids;
};

}  // namespace

EntryFiles listEntryFiles(const std::string& root, const std::vector<std::string>& folders) {
  Lister lister(root);
  for (const std::string& folder : folders) lister.addFolder(folder, "", 1);
  return std::move(lister.found);
}

bool haveEntryFilesChanged(const std::string& root, const EntryFiles& files) {
  return std::any_of(
      files.changeTimes.begin(), files.changeTimes.end(),
      [&root](const auto& entry) { return factsOf(root + entry.first).changedAt != entry.second; });
}

}  // namespace korvantis
