#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/FileManagerCalls.h"
#include "platform/linux/UserFolders.h"

namespace korvantis {
namespace {

using std::filesystem::directory_options;
using std::filesystem::recursive_directory_iterator;

/// A folder that stops answering half-way ends the walk.
struct Walk {
  std::string folder;
  recursive_directory_iterator next;

  std::optional<std::string> step() {
    if (next == recursive_directory_iterator()) return std::nullopt;
    // The prefix is ours, so the relative path is what follows it and a slash.
    std::string path = next->path().native().substr(folder.size() + 1);
    std::error_code error;
    next.increment(error);
    if (error) next = {};
    return path;
  }
};

std::optional<DirectoryEnumerator> enumerator(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  std::error_code error;
  recursive_directory_iterator begin(path, directory_options::skip_permission_denied, error);
  if (error) return std::nullopt;
  // With permission denied the folder itself would look empty instead of closed.
  if (::access(path.c_str(), R_OK | X_OK) != 0) return std::nullopt;
  if (path == "/") path.clear();
  auto walk = std::make_shared<Walk>(Walk{std::move(path), std::move(begin)});
  return [walk] { return walk->step(); };
}

std::optional<std::uint64_t> sizeOfItem(const std::string& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(facts.st_size);
}

bool isFolder(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

bool createFolder(const std::string& path) {
  for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    ::mkdir(path.substr(0, end).c_str(), 0700);
    if (end == std::string::npos) return isFolder(path);
  }
}

}  // namespace

FileManagerCalls systemFileManagerCalls() {
  FileManagerCalls calls;
  calls.homeDirectoryForCurrentUser = homeFolder;
  calls.fileExistsAtPath = [](const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
  };
  calls.enumeratorAtPath = enumerator;
  calls.fileSize = sizeOfItem;
  calls.applicationSupportDirectories = applicationSupportFolders;
  calls.downloadsDirectories = downloadFolders;
  calls.temporaryDirectory = temporaryFolder;
  calls.createDirectory = createFolder;
  return calls;
}

}  // namespace korvantis
