#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace korvantis {

/// One `.desktop` file that counts.
struct EntryFile {
  /// Its desktop id and its path.
  std::string id;
  std::string path;

  bool operator==(const EntryFile&) const = default;
};

/// All desktop entries of a machine, and what gives a change of them away.
struct EntryFiles {
  /// Each id once, from the first folder that has it.
  std::vector<EntryFile> files;
  /// Every folder looked into and every file with the time of its last change (nanoseconds; 0 for
  /// one that is missing).
  std::vector<std::pair<std::string, std::int64_t>> changeTimes;
};

/// Lists the entries in `folders`, best first, and in the folders in them. `root` stands for "/".
/// Never more than 20,000; links that lead in a circle end. Any thread.
EntryFiles listEntryFiles(const std::string& root, const std::vector<std::string>& folders);

/// Whether any of them was changed, added or removed since. Any thread.
bool haveEntryFilesChanged(const std::string& root, const EntryFiles& files);

}  // namespace korvantis
