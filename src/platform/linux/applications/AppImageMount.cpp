#include "platform/linux/applications/AppImageMount.h"

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "platform/linux/FileText.h"
#include "platform/linux/FolderNames.h"
#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr std::string_view mountBeginning = "/tmp/.mount_";
constexpr std::string_view extension = ".desktop";
constexpr std::size_t longestEntry = 262'144;

bool isThere(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0;
}

EntryPointer entryOfMount(const std::string& root, const std::string& mount) {
  std::vector<std::string> names = namesInFolder(root + mount);
  std::erase_if(names, [](const std::string& name) { return !name.ends_with(extension); });
  if (names.empty()) return nullptr;
  const std::string& name = *std::min_element(names.begin(), names.end());
  const auto file = canonicalPath(root, mount + "/" + name);
  // A link out of the mount would lend it another application's entry.
  if (!file || !file->starts_with(mount + "/")) return nullptr;
  auto entry = parseDesktopEntry(readFileText(AT_FDCWD, root + *file, longestEntry).text, {});
  if (!entry || entry->runsInTerminal) return nullptr;
  IndexedEntry indexed;
  indexed.id = name.substr(0, name.size() - extension.size());
  indexed.identifier = indexed.id + mount.substr(mount.rfind('/'));
  indexed.path = mount + "/" + name;
  indexed.bundlePath = bundlePathOf(indexed.path);
  indexed.stems = {"apprun", programStem(indexed.id)};
  const auto words = execWords(entry->exec);
  if (!words.empty()) indexed.stems.push_back(programStem(words.front()));
  indexed.entry = *std::move(entry);
  return std::make_shared<const IndexedEntry>(std::move(indexed));
}

}  // namespace

EntryPointer AppImageMount::find(ProcessEvidence& process, const ProcessSurroundings& around) {
  const std::string& path = process.executable();
  if (!path.starts_with(mountBeginning)) return nullptr;
  const std::size_t end = path.find('/', mountBeginning.size());
  if (end == std::string::npos) return nullptr;
  const std::string mount = path.substr(0, end);
  {
    const std::lock_guard guard(lock);
    const auto known = entries.find(mount);
    if (known != entries.end()) return known->second;
  }
  EntryPointer entry = entryOfMount(around.root, mount);
  const std::lock_guard guard(lock);
  // No run gets the mount of an earlier one, so what has ended is asked for no more.
  std::erase_if(entries, [&](const auto& known) { return !isThere(around.root + known.first); });
  return entries.emplace(mount, std::move(entry)).first->second;
}

}  // namespace korvantis
