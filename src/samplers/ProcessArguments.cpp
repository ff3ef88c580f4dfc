#include "samplers/ProcessArguments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

#include "core/Utf8.h"
#include "platform/DarwinTypes.h"

namespace korvantis {

namespace {

constexpr std::size_t countBytes = 4;
constexpr std::size_t smallestBlock = countBytes + 1;
constexpr std::size_t argumentsLimit = 65536;
constexpr std::size_t argumentCountLimit = 8;

std::int32_t littleEndianInt32(std::span<const char> bytes) {
  std::uint32_t value = 0;
  for (std::size_t index = 0; index < countBytes; ++index) {
    value |= std::uint32_t{static_cast<unsigned char>(bytes[index])} << (8 * index);
  }
  return static_cast<std::int32_t>(value);
}

/// What follows the executable path and the zero bytes after it; empty when the block ends
/// before that.
std::string_view wordBytes(std::span<const char> block) {
  const std::string_view bytes(block.data() + countBytes, block.size() - countBytes);
  const std::size_t pathEnd = bytes.find('\0');
  if (pathEnd == std::string_view::npos) return {};
  const std::size_t firstWord = bytes.find_first_not_of('\0', pathEnd);
  return firstWord == std::string_view::npos ? std::string_view{} : bytes.substr(firstWord);
}

std::optional<std::vector<char>> readBlock(const SysctlCalls& calls, std::int32_t pid) {
  const std::array<int, 3> name{CTL_KERN, KERN_PROCARGS2, pid};
  constexpr auto nameLength = static_cast<unsigned>(name.size());
  std::size_t size = 0;
  if (calls.sysctl(name.data(), nameLength, nullptr, &size) != 0) return std::nullopt;
  if (size < smallestBlock || size > argumentsLimit) return std::nullopt;

  std::vector<char> block(size);
  if (calls.sysctl(name.data(), nameLength, block.data(), &size) != 0) return std::nullopt;
  // The block may have changed between the calls; more than was asked for can't be there.
  block.resize(std::min(size, block.size()));
  return block;
}

std::string joinedByBlank(const std::vector<std::string>& words) {
  std::string joined = words.front();
  for (std::size_t index = 1; index < words.size(); ++index) joined += ' ' + words[index];
  return joined;
}

}  // namespace

std::vector<std::string> processArgumentWords(std::span<const char> block) {
  std::vector<std::string> words;
  if (block.size() < smallestBlock) return words;
  const std::int32_t argumentCount = littleEndianInt32(block);
  if (argumentCount < 1) return words;

  const std::size_t wanted = std::min(static_cast<std::size_t>(argumentCount), argumentCountLimit);
  std::string_view rest = wordBytes(block);
  while (words.size() < wanted) {
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos) break;
    const std::string_view word = rest.substr(0, end);
    if (!word.empty() && isValidUtf8(word)) words.emplace_back(word);
    rest.remove_prefix(end + 1);
  }
  return words;
}

std::string readProcessArguments(const SysctlCalls& calls, std::int32_t pid,
                                 const std::string& fallbackName) {
  const std::optional<std::vector<char>> block = readBlock(calls, pid);
  if (!block) return fallbackName;
  const std::vector<std::string> words = processArgumentWords(*block);
  return words.empty() ? fallbackName : joinedByBlank(words);
}

}  // namespace korvantis
