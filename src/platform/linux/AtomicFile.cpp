#include "platform/linux/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"

namespace korvantis {
namespace {

struct NewFile {
  FileDescriptor file;
  std::string path;
};

/// A new file with a name of its own. A killed program with the same number may have left some.
NewFile newFileBeside(const std::string& path) {
  static std::atomic<unsigned> counter{0};
  const std::string prefix =
      path.substr(0, path.rfind('/') + 1) + ".korvantis-" + std::to_string(::getpid()) + "-";
  for (;;) {
    NewFile result;
    result.path = prefix + std::to_string(counter++);
    result.file =
        FileDescriptor{::open(result.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)};
    if (result.file || errno != EEXIST) return result;
  }
}

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = ::write(file, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

/// Some file systems have nothing to bring to a disk and say so.
bool bringToDisk(int file) {
  return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
}

void takePermissionsOf(const std::string& path, int file) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode)) {
    ::fchmod(file, facts.st_mode & 0777);
  }
}

}  // namespace

bool writeFileAtomically(const std::string& path, std::string_view bytes) {
  // The system would take what stands before a zero byte for the whole path.
  if (path.find('\0') != std::string::npos) return false;
  const NewFile made = newFileBeside(path);
  if (!made.file) return false;
  const int file = made.file.number();
  takePermissionsOf(path, file);
  const bool isWhole = writeAll(file, bytes) && bringToDisk(file) &&
                       std::rename(made.path.c_str(), path.c_str()) == 0;
  if (!isWhole) ::unlink(made.path.c_str());
  return isWhole;
}

}  // namespace korvantis
