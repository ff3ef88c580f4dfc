#include "platform/linux/applications/DesktopEntryIndex.h"

#include <utility>

#include "platform/linux/applications/EntryReading.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

const std::vector<EntryPointer> noEntries;

template <typename Lists>
const std::vector<EntryPointer>& listIn(const Lists& lists, const std::string& key) {
  const auto found = lists.find(key);
  return found == lists.end() ? noEntries : found->second;
}

template <typename Map>
EntryPointer entryIn(const Map& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : found->second;
}

}  // namespace

DesktopEntryIndex::DesktopEntryIndex(const ApplicationSources& sources, const EntryFiles& files) {
  EntryReading reading(sources);
  for (const EntryFile& file : files.files) {
    if (auto entry = reading.read(file)) {
      add(std::make_shared<const IndexedEntry>(*std::move(entry)));
    }
  }
}

void DesktopEntryIndex::add(const EntryPointer& entry) {
  if (!entry->program.empty()) {
    (entry->isScript ? byScript : byProgram)[entry->program].push_back(entry);
  }
  for (const std::string& script : entry->scripts) byScript[script].push_back(entry);
  scriptNames.insert(entry->scriptNames.begin(), entry->scriptNames.end());
  for (const std::string& folder : entry->privateFolders) byFolder[folder].push_back(entry);
  const std::size_t line = entry->id.find('_');
  if (line != std::string::npos) bySnap[entry->id.substr(0, line)].push_back(entry);
  byId.emplace(entry->id, entry);
  byPath.emplace(entry->path, entry);
  byBundle.emplace(entry->bundlePath, entry);
}

const std::vector<EntryPointer>& DesktopEntryIndex::withProgram(const std::string& path) const {
  return listIn(byProgram, path);
}

const std::vector<EntryPointer>& DesktopEntryIndex::withScript(const std::string& path) const {
  return listIn(byScript, path);
}

bool DesktopEntryIndex::hasScriptNamed(std::string_view name) const {
  return scriptNames.contains(std::string(name));
}

const std::vector<EntryPointer>& DesktopEntryIndex::aroundFile(std::string_view path) const {
  for (path = folderOf(path); !path.empty(); path = folderOf(path)) {
    const auto& found = listIn(byFolder, std::string(path));
    if (!found.empty()) return found;
  }
  return noEntries;
}

const std::vector<EntryPointer>& DesktopEntryIndex::ofSnap(const std::string& name) const {
  return listIn(bySnap, name);
}

EntryPointer DesktopEntryIndex::withId(const std::string& id) const {
  return entryIn(byId, id);
}

EntryPointer DesktopEntryIndex::withPath(const std::string& path) const {
  return entryIn(byPath, path);
}

EntryPointer DesktopEntryIndex::withBundle(const std::string& path) const {
  return entryIn(byBundle, path);
}

}  // namespace korvantis
