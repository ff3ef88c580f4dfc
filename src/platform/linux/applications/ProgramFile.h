#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// A program as it lies on disk.
struct ProgramFile {
  enum class Kind { native, script };

  /// Canonical, on the machine that it was looked for on.
  std::string path;
  Kind kind = Kind::native;
  /// The text of a script, at most 64 KiB of it.
  std::string text;

  bool operator==(const ProgramFile&) const = default;
};

/// Finds the program that a command line's first word names: a path, or a name to be looked for in
/// `folders`. `root` stands for "/". Absent when there is none, it may not be executed, or it is
/// neither a native binary nor a script with its interpreter named. Any thread.
std::optional<ProgramFile> findProgram(const std::string& root, std::string_view word,
                                       const std::vector<std::string>& folders);

/// The absolute paths that stand in a script, each once, as they stand there. Any thread.
std::vector<std::string> pathsInScript(std::string_view text);

}  // namespace korvantis
