#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/FileManagerCalls.h"
#include "platform/linux/AtomicFile.h"
#include "platform/linux/FolderWalk.h"
#include "platform/linux/UserFolders.h"

namespace korvantis {
namespace {

/// The system would take such a path for what stands before the zero byte.
bool namesNothing(const std::string& path) {
  return path.find('\0') != std::string::npos;
}

bool exists(const std::string& path) {
  return !namesNothing(path) && ::access(path.c_str(), F_OK) == 0;
}

std::optional<DirectoryEnumerator> enumerator(const std::string& path) {
  if (namesNothing(path)) return std::nullopt;
  std::optional<FolderWalk> walk = FolderWalk::over(path);
  if (!walk) return std::nullopt;
  // A function object must be copyable, and a walk is not.
  return [shared = std::make_shared<FolderWalk>(std::move(*walk))] { return shared->next(); };
}

std::optional<std::uint64_t> sizeOfItem(const std::string& path) {
  struct stat facts {};
  if (namesNothing(path) || ::lstat(path.c_str(), &facts) != 0) return std::nullopt;
  if (!S_ISREG(facts.st_mode) && !S_ISLNK(facts.st_mode)) return std::nullopt;
  return static_cast<std::uint64_t>(facts.st_size);
}

bool isFolder(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

bool createFolder(const std::string& path) {
  if (namesNothing(path)) return false;
  for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
    ::mkdir(path.substr(0, end).c_str(), 0700);
    if (end == std::string::npos) return isFolder(path);
  }
}

}  // namespace

FileManagerCalls systemFileManagerCalls() {
  FileManagerCalls calls;
  calls.homeDirectoryForCurrentUser = homeFolder;
  calls.fileExistsAtPath = exists;
  calls.enumeratorAtPath = enumerator;
  calls.fileSize = sizeOfItem;
  calls.applicationSupportDirectories = applicationSupportFolders;
  calls.downloadsDirectories = downloadFolders;
  calls.temporaryDirectory = temporaryFolder;
  calls.createDirectory = createFolder;
  calls.writeAtomically = writeFileAtomically;
  return calls;
}

}  // namespace korvantis
