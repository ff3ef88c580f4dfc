#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// Tells the folders that hold one application and nothing else from those that many share.
class PrivateFolders {
 public:
  /// Looks below `rootFolder`, which stands for "/" (empty for this machine).
  explicit PrivateFolders(const std::string& rootFolder) : root(rootFolder) {}

  /// The private folders around the program at the canonical path `program`, for an application
  /// with these stems: its own folder, and the one above when it lies in a "bin"; none when those
  /// are shared by many programs. Reads no file.
  static std::vector<std::string> around(std::string_view program,
                                         const std::vector<std::string>& stems);

  /// The folders of system-wide places that are named like one of the stems and hold an executable
  /// of that name.
  std::vector<std::string> named(const std::vector<std::string>& stems) const;

  /// The private folders that a script names, itself or through programs in them; only those
  /// whose path has a part that is like a stem, since scripts name the folders of others too.
  std::vector<std::string> inScript(const std::vector<std::string>& paths,
                                    const std::vector<std::string>& stems) const;

 private:
  const std::string& root;
};

}  // namespace korvantis
