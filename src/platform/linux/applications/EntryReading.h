#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "platform/linux/applications/ApplicationSources.h"
#include "platform/linux/applications/EntryFiles.h"
#include "platform/linux/applications/IndexedEntry.h"
#include "platform/linux/applications/ProgramFile.h"

namespace korvantis {

/// Turns desktop entries into what processes are compared with. Remembers the programs that it has
/// found, since several entries often name one. One thread.
class EntryReading {
 public:
  explicit EntryReading(const ApplicationSources& applicationSources)
      : sources(applicationSources) {}

  /// The application of a file; absent when the file can't be read, describes none that is shown
  /// in menus, runs in a terminal, or starts other applications' programs.
  std::optional<IndexedEntry> read(const EntryFile& file);

 private:
  const std::optional<ProgramFile>& program(const std::string& word);
  void addProgram(IndexedEntry& entry, const std::vector<std::string>& words);
  void addInterpreted(IndexedEntry& entry, const std::vector<std::string>& words) const;
  void addScript(IndexedEntry& entry, const ProgramFile& script) const;

  const ApplicationSources& sources;
  std::unordered_map<std::string, std::optional<ProgramFile>> programs;
};

}  // namespace korvantis
