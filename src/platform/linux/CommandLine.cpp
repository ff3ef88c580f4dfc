#include "platform/linux/CommandLine.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace korvantis::CommandLine {

std::string_view program(std::string_view bytes) {
  const std::size_t end = bytes.find('\0');
  const std::string_view first = bytes.substr(0, end);
  const bool isOnly =
      end == std::string_view::npos || bytes.find_first_not_of('\0', end) == std::string_view::npos;
  return isOnly ? first.substr(0, first.find(" --")) : first;
}

std::string argumentBlock(std::string_view executable, std::string_view bytes) {
  if (bytes.empty()) return {};
  std::string words(bytes);
  // A program that has written over its own arguments can have lost the last zero byte.
  if (words.back() != '\0') words.push_back('\0');
  const auto count = static_cast<std::int32_t>(std::count(words.begin(), words.end(), '\0'));
  std::string block(sizeof count, '\0');
  std::memcpy(block.data(), &count, sizeof count);
  block.append(executable);
  block.push_back('\0');
  block.append(words);
  return block;
}

}  // namespace korvantis::CommandLine
