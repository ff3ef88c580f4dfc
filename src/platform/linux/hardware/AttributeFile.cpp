#include "platform/linux/hardware/AttributeFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

#include "platform/linux/TextFields.h"

namespace korvantis {

std::optional<std::string> AttributeFile::text() {
  if (!file) file = FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) return std::nullopt;
  std::array<char, 8192> page;  // NOLINT: filled by pread
  ssize_t got = -1;
  do got = ::pread(file.number(), page.data(), page.size(), 0);
  while (got < 0 && errno == EINTR);
  if (got < 0) {
    file = FileDescriptor();
    return std::nullopt;
  }
  std::string_view read(page.data(), static_cast<std::size_t>(got));
  const std::size_t last = read.find_last_not_of(std::string_view(" \t\r\n\0", 5));
  return std::string(read.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::optional<std::int64_t> AttributeFile::number() {
  const auto read = text();
  return read ? signedNumber(*read) : std::nullopt;
}

std::string attributeText(const std::string& path) {
  return AttributeFile(path).text().value_or("");
}

std::optional<std::int64_t> attributeNumber(const std::string& path) {
  return AttributeFile(path).number();
}

}  // namespace korvantis
