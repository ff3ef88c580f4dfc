#include "platform/linux/NumberedEntries.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

constexpr std::size_t bufferSize = 32768;
// What a record of the kernel's takes at most when its name is a number of this size.
constexpr std::size_t numberRecordSize = 32;
constexpr std::size_t lengthOffset = 16;
constexpr std::size_t nameOffset = 19;

std::optional<std::int32_t> entryNumber(std::string_view name) {
  if (name.size() > 1 && name.front() == '0') return std::nullopt;
  const auto number = unsignedNumber(name);
  if (!number || *number > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
  return static_cast<std::int32_t>(*number);
}

void appendNumbers(std::string_view records, std::vector<std::int32_t>& numbers) {
  while (records.size() > nameOffset) {
    std::uint16_t length = 0;
    std::memcpy(&length, records.data() + lengthOffset, sizeof length);
    if (length <= nameOffset || length > records.size()) return;
    const std::string_view padded = records.substr(nameOffset, length - nameOffset);
    if (const auto number = entryNumber(padded.substr(0, padded.find('\0')))) {
      numbers.push_back(*number);
    }
    records.remove_prefix(length);
  }
}

}  // namespace

std::optional<std::vector<std::int32_t>> numberedEntries(int directory, const std::string& path,
                                                         std::size_t limit) {
  const FileDescriptor folder{
      ::openat(directory, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (!folder) return std::nullopt;
  // readdir(3) would ask for 32 KB of entries at once, and the kernel makes an inode for each
  // descriptor that it lists: a program with thousands of them would cost milliseconds.
  const std::size_t records = std::min(limit, bufferSize / numberRecordSize - 4) + 4;
  const std::size_t size = records * numberRecordSize;
  alignas(8) std::array<char, bufferSize> buffer;  // NOLINT: filled by the kernel
  std::vector<std::int32_t> numbers;
  while (numbers.size() < limit) {
    const long got = ::syscall(SYS_getdents64, folder.number(), buffer.data(), size);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    appendNumbers(std::string_view(buffer.data(), static_cast<std::size_t>(got)), numbers);
  }
  if (numbers.size() > limit) numbers.resize(limit);
  return numbers;
}

}  // namespace korvantis
