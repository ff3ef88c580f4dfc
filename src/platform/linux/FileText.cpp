#include "platform/linux/FileText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"

namespace korvantis {

FileText readFileText(int directory, const std::string& path, std::size_t limit) {
  FileText result;
  const FileDescriptor file{::openat(directory, path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
  if (!file) {
    result.error = errno;
    return result;
  }
  std::array<char, 16384> chunk;  // NOLINT: filled by read
  while (result.text.size() < limit) {
    const std::size_t wanted = std::min(chunk.size(), limit - result.text.size());
    const ssize_t got = ::read(file.number(), chunk.data(), wanted);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return FileText{{}, errno};
    if (got == 0) break;
    result.text.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return result;
}

std::optional<std::string> readLinkText(int directory, const std::string& path) {
  std::array<char, 4096> buffer;  // NOLINT: filled by readlinkat
  const ssize_t length = ::readlinkat(directory, path.c_str(), buffer.data(), buffer.size());
  if (length < 0 || static_cast<std::size_t>(length) >= buffer.size()) return std::nullopt;
  return std::string(buffer.data(), static_cast<std::size_t>(length));
}

}  // namespace korvantis
