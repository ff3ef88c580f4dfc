#include "platform/linux/FolderWalk.h"

#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace korvantis {

std::optional<FolderWalk> FolderWalk::over(const std::string& path) {
  OpenFolder folder = opened(path, 0);
  if (!folder) return std::nullopt;
  return FolderWalk(path, std::move(folder));
}

FolderWalk::FolderWalk(std::string path, OpenFolder folder)
    : root(std::move(path)), open(std::move(folder)) {}

FolderWalk::OpenFolder FolderWalk::opened(const std::string& path, int flags) {
  const int descriptor =
      ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | flags);
  if (descriptor < 0) return nullptr;
  OpenFolder folder(::fdopendir(descriptor));
  if (!folder) ::close(descriptor);
  return folder;
}

std::optional<std::string> FolderWalk::next() {
  while (open || openPending()) {
    const dirent* const entry = ::readdir(open.get());
    if (entry == nullptr) {
      open.reset();
      continue;
    }
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    std::string path = prefix;
    path += name;
    if (isFolder(*entry)) pending.push_back(path);
    return path;
  }
  return std::nullopt;
}

bool FolderWalk::openPending() {
  while (!pending.empty()) {
    prefix = std::move(pending.back());
    pending.pop_back();
    // A link may have taken the folder's place since.
    open = opened(root + "/" + prefix, O_NOFOLLOW);
    prefix += '/';
    if (open) return true;
  }
  return false;
}

bool FolderWalk::isFolder(const dirent& entry) const {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat facts {};
  return ::fstatat(::dirfd(open.get()), entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISDIR(facts.st_mode);
}

}  // namespace korvantis
