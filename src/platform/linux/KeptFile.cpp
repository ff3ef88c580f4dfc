#include "platform/linux/KeptFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace korvantis {
namespace {

/// No file that is kept comes near this; a damaged tree must not fill the memory.
constexpr std::size_t mostBytes = std::size_t{16} << 20;
constexpr double recentSeconds = 0.1;

}  // namespace

KeptFile::KeptFile(std::string filePath) : path(std::move(filePath)) {}

std::optional<std::string> KeptFile::read() {
  const std::scoped_lock guard(lock);
  return readLocked();
}

std::optional<std::string> KeptFile::readOnceAround(double now) {
  const std::scoped_lock guard(lock);
  const bool isRecent = lastText && now >= lastReadAt && now - lastReadAt < recentSeconds;
  if (isRecent) return lastText;
  lastText = readLocked();
  lastReadAt = now;
  return lastText;
}

std::optional<std::string> KeptFile::readLocked() {
  if (!file) file = FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) return std::nullopt;
  std::string text;
  std::array<char, 16384> chunk;  // NOLINT: filled by pread
  while (text.size() < mostBytes) {
    const auto offset = static_cast<off_t>(text.size());
    const ssize_t got = ::pread(file.number(), chunk.data(), chunk.size(), offset);
    if (got < 0 && errno == EINTR) continue;
    if (got == 0) break;
    if (got < 0) {
      file = FileDescriptor();
      return std::nullopt;
    }
    text.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return text;
}

}  // namespace korvantis
