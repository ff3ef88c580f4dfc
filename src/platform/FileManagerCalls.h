#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// Walks a folder's tree, one entry a call: gives the next path relative to the folder ("a",
/// "a/b"), a folder before what it holds; absent at the end. It does not follow links, opens
/// nothing but folders, and passes over those that can't be read or are gone by now. One thread at
/// a time.
using DirectoryEnumerator = std::function<std::optional<std::string>()>;

/// Files and folders of the user (`NSFileManager`). Paths are the bytes that the file system uses:
/// UTF-8 on macOS, where others name nothing; on Linux whatever the names there are. One with a
/// zero byte inside names nothing. Any thread; a network file system can block the caller.
struct FileManagerCalls {
  /// The current user's home, absolute and with its links resolved where that is possible.
  std::function<std::string()> homeDirectoryForCurrentUser;
  /// True when anything, file or folder, stands at `path`; a link counts by what it points to.
  std::function<bool(const std::string& path)> fileExistsAtPath;
  /// A walk over the folder at `path`; absent when it is no folder or can't be opened.
  std::function<std::optional<DirectoryEnumerator>(const std::string& path)> enumeratorAtPath;
  /// The size in bytes of the file at `path`, or of a link itself (`NSFileSize`); absent when it
  /// can't be read, and for folders, pipes and the like.
  std::function<std::optional<std::uint64_t>(const std::string& path)> fileSize;
  /// `URLsForDirectory` with `NSApplicationSupportDirectory` and the user domain: the folders for
  /// what programs keep, best first; they need not exist.
  std::function<std::vector<std::string>()> applicationSupportDirectories;
  /// The same with `NSDownloadsDirectory`.
  std::function<std::vector<std::string>()> downloadsDirectories;
  /// `NSTemporaryDirectory()`: a folder for temporary files that no other user can write to.
  std::function<std::string()> temporaryDirectory;
  /// Makes a folder and what is missing above it, for this user alone (mode 0700); true when it
  /// is there afterwards.
  std::function<bool(const std::string& path)> createDirectory;
  /// Writes a file whole or not at all (`writeToFile:options:` with `NSDataWritingAtomic`): a new
  /// one in the same folder, moved over what stands at `path`. True on success; otherwise what was
  /// there is still there.
  std::function<bool(const std::string& path, std::string_view bytes)> writeAtomically;
};

/// The file system's own answers. On Linux the folders follow the environment at each call.
FileManagerCalls systemFileManagerCalls();

}  // namespace korvantis
