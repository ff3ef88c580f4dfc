#pragma once

#include <dirent.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// A walk through a folder's tree, one entry a call. It holds one folder open at a time, however
/// deep the tree is, and remembers the names of the folders still to be visited. One thread at a
/// time.
class FolderWalk {
 public:
  /// A walk over the folder at `path`, or at the end of a link there; absent when that is no folder
  /// or can't be opened. Nothing else is ever opened, so a pipe can't hold it up.
  static std::optional<FolderWalk> over(const std::string& path);

  /// The path of the next entry relative to the folder, in the bytes of the file system, a folder
  /// before what it holds; absent at the end. Links are not followed. A folder that can't be
  /// opened, or is gone by now, is passed over.
  std::optional<std::string> next();

 private:
  struct Close {
    void operator()(DIR* folder) const { ::closedir(folder); }
  };
  using OpenFolder = std::unique_ptr<DIR, Close>;

  FolderWalk(std::string path, OpenFolder folder);

  static OpenFolder opened(const std::string& path, int flags);
  bool openPending();
  bool isFolder(const dirent& entry) const;

  std::string root;
  /// The folder being listed, and what stands before the names of its entries.
  OpenFolder open;
  std::string prefix;
  /// Relative paths; the last one is visited next, so that the list stays short.
  std::vector<std::string> pending;
};

}  // namespace korvantis
