#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/EntryFiles.h"
#include "platform/linux/applications/IndexedEntry.h"

namespace korvantis {

using EntryPointer = std::shared_ptr<const IndexedEntry>;

/// The desktop applications of a machine at one moment, to be found by what a process shows of
/// itself. Left out are entries that no menu shows, those that run in a terminal (their programs
/// are the terminal's), and those of programs that start others. Never changes; any thread.
class DesktopEntryIndex {
 public:
  /// Nothing is indexed.
  DesktopEntryIndex() = default;

  /// Reads all `files` below the root of `sources`.
  DesktopEntryIndex(const ApplicationSources& sources, const EntryFiles& files);

  /// The applications whose main program is the native binary at a canonical path.
  const std::vector<EntryPointer>& withProgram(const std::string& path) const;

  /// The applications that an interpreter runs from the file at a canonical path.
  const std::vector<EntryPointer>& withScript(const std::string& path) const;

  /// Whether any application has a script that may go by this base name.
  bool hasScriptNamed(std::string_view name) const;

  /// The applications with the innermost private folder that the file at `path` lies below.
  const std::vector<EntryPointer>& aroundFile(std::string_view path) const;

  /// The applications of a snap. Their ids begin with its name.
  const std::vector<EntryPointer>& ofSnap(const std::string& name) const;

  /// The application with this desktop id; null when there is none.
  EntryPointer withId(const std::string& id) const;

  /// The application whose entry is the file at `path`; null when there is none.
  EntryPointer withPath(const std::string& path) const;

  /// The application that the bundle at `path` stands for; null when there is none.
  EntryPointer withBundle(const std::string& path) const;

  std::size_t size() const { return byId.size(); }

 private:
  using Lists = std::unordered_map<std::string, std::vector<EntryPointer>>;

  void add(const EntryPointer& entry);

  Lists byProgram;
  Lists byScript;
  Lists byFolder;
  Lists bySnap;
  std::unordered_set<std::string> scriptNames;
  std::unordered_map<std::string, EntryPointer> byId;
  std::unordered_map<std::string, EntryPointer> byPath;
  std::unordered_map<std::string, EntryPointer> byBundle;
};

}  // namespace korvantis
