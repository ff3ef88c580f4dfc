#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/applications/DesktopEntry.h"

namespace korvantis {

/// A desktop application as the processes are compared with it.
struct IndexedEntry {
  DesktopEntry entry;
  /// The desktop id: the file's name without its extension, folders in front of it with dashes.
  std::string id;
  /// What tells the application from all others: `id`, and for a run of an AppImage its mount too,
  /// since each run is an application of its own.
  std::string identifier;
  /// The file.
  std::string path;
  /// The path of the bundle that stands for the application: `path` with ".app" at its end.
  std::string bundlePath;
  /// Canonical path of the native program or script that its command line names; empty when that
  /// is missing, or is one that runs others.
  std::string program;
  bool isScript = false;
  /// The words after the program, or after the script that an interpreter is given.
  std::vector<std::string> extraArguments;
  /// What the base name of its main program may be, in lower case.
  std::vector<std::string> stems;
  /// Folders that hold nothing but this application.
  std::vector<std::string> privateFolders;
  /// Files that an interpreter runs for it, besides a script that `program` names.
  std::vector<std::string> scripts;
  /// The base names under which an interpreter may be given one of its scripts.
  std::vector<std::string> scriptNames;
};

/// What stands for `word` in comparisons of program names: its base name in lower case (ASCII),
/// without an extension that only tells how the program is packed (".bin", ".sh", ...).
std::string programStem(std::string_view word);

/// Whether two stems name one program: they are equal, or one holds the other and that is long
/// enough to mean something.
bool stemsAreAlike(std::string_view first, std::string_view second);

/// Whether the base name of an executable is that of the application's main program.
bool isMainProgramOf(const IndexedEntry& entry, std::string_view executable);

/// What the path of an application's file becomes as a bundle: ".app" in place of ".desktop".
std::string bundlePathOf(std::string_view entryPath);

}  // namespace korvantis
