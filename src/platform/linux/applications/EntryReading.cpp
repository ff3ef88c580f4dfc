#include "platform/linux/applications/EntryReading.h"

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <string_view>

#include "platform/linux/FileText.h"
#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/applications/KnownPrograms.h"
#include "platform/linux/applications/PrivateFolders.h"
#include "platform/linux/applications/RootedPath.h"

namespace korvantis {
namespace {

constexpr std::size_t longestEntry = 262'144;

template <typename Item>
void addOnce(std::vector<Item>& list, Item item) {
  if (item.empty() || std::find(list.begin(), list.end(), item) != list.end()) return;
  list.push_back(std::move(item));
}

/// "editor" of "org.example.Editor" and "editor_editor".
std::string stemOfId(std::string_view id) {
  return programStem(id.substr(id.find_last_of("._") + 1));
}

/// The word of "--command=..." in a sandbox's command line.
std::string commandInSandbox(const std::vector<std::string>& words) {
  constexpr std::string_view option = "--command=";
  for (const std::string& word : words) {
    if (word.starts_with(option)) return word.substr(option.size());
  }
  return {};
}

}  // namespace

std::optional<IndexedEntry> EntryReading::read(const EntryFile& file) {
  const auto path = canonicalPath(sources.root, file.path);
  if (!path) return std::nullopt;
  const FileText text = readFileText(AT_FDCWD, sources.root + *path, longestEntry);
  auto entry = parseDesktopEntry(text.text, sources.languages);
  if (!entry || !entry->isShown || entry->runsInTerminal) return std::nullopt;
  const std::vector<std::string> words = execWords(entry->exec);
  if (words.empty() && !entry->isBusActivated) return std::nullopt;

  IndexedEntry indexed;
  indexed.entry = *std::move(entry);
  indexed.id = file.id;
  indexed.identifier = file.id;
  indexed.path = file.path;
  indexed.bundlePath = bundlePathOf(file.path);
  if (!words.empty()) addProgram(indexed, words);
  addOnce(indexed.stems, stemOfId(file.id));
  const bool startsOthers =
      std::any_of(indexed.stems.begin(), indexed.stems.end(), KnownPrograms::startsOthers);
  if (startsOthers) return std::nullopt;
  return indexed;
}

const std::optional<ProgramFile>& EntryReading::program(const std::string& word) {
  const auto [found, isNew] = programs.try_emplace(word);
  if (isNew) found->second = findProgram(sources.root, word, sources.programFolders);
  return found->second;
}

void EntryReading::addProgram(IndexedEntry& entry, const std::vector<std::string>& words) {
  const std::string name(baseNameOf(words.front()));
  if (KnownPrograms::isInterpreter(name)) return addInterpreted(entry, words);
  if (KnownPrograms::startsOthers(name)) {
    // A sandbox tells which application it holds; the command line only names the sandbox.
    const bool isSandbox = name == "flatpak" || name == "snap";
    if (isSandbox) addOnce(entry.stems, programStem(commandInSandbox(words)));
    if (!isSandbox && KnownPrograms::isSessionComponent(name)) entry.stems.push_back(name);
    return;
  }
  addOnce(entry.stems, programStem(words.front()));
  entry.extraArguments.assign(words.begin() + 1, words.end());
  const auto& file = program(words.front());
  if (!file) return;
  const std::string resolvedName(baseNameOf(file->path));
  if (KnownPrograms::isInterpreter(resolvedName) || KnownPrograms::startsOthers(resolvedName))
    return;
  entry.program = file->path;
  addOnce(entry.stems, programStem(file->path));
  entry.privateFolders = PrivateFolders::around(file->path, entry.stems);
  for (std::string& folder : PrivateFolders(sources.root).named(entry.stems)) {
    addOnce(entry.privateFolders, std::move(folder));
  }
  entry.isScript = file->kind == ProgramFile::Kind::script;
  if (!entry.isScript) return;
  addOnce(entry.scriptNames, name);
  addOnce(entry.scriptNames, resolvedName);
  addScript(entry, *file);
}

void EntryReading::addInterpreted(IndexedEntry& entry,
                                  const std::vector<std::string>& words) const {
  for (auto word = words.begin() + 1; word != words.end(); ++word) {
    if (!word->starts_with('/')) continue;
    const auto script = canonicalPath(sources.root, *word);
    if (!script) continue;
    entry.scripts = {*script};
    entry.scriptNames = {std::string(baseNameOf(*word)), std::string(baseNameOf(*script))};
    addOnce(entry.stems, programStem(*script));
    entry.extraArguments.assign(word + 1, words.end());
    return;
  }
}

void EntryReading::addScript(IndexedEntry& entry, const ProgramFile& script) const {
  const std::vector<std::string> paths = pathsInScript(script.text);
  const PrivateFolders folders(sources.root);
  for (std::string& folder : folders.inScript(paths, entry.stems)) {
    addOnce(entry.privateFolders, std::move(folder));
  }
  for (const std::string& path : paths) {
    const auto file = canonicalPath(sources.root, path);
    if (!file || *file == script.path) continue;
    // What lies in a folder of its own and is named like the program is the program.
    const bool isOwn = stemsAreAlike(programStem(*file), programStem(script.path)) &&
                       !PrivateFolders::around(*file, entry.stems).empty();
    if (!isOwn) continue;
    addOnce(entry.scripts, *file);
    addOnce(entry.scriptNames, std::string(baseNameOf(path)));
    addOnce(entry.scriptNames, std::string(baseNameOf(*file)));
  }
}

}  // namespace korvantis
