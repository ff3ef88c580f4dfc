#include "support/ScriptedProcess.h"

namespace korvantis::test {

std::string argumentBlock(std::int32_t count, const std::string& path,
                          const std::vector<std::string>& words,
                          const std::vector<std::string>& environment) {
  std::string block;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    block += static_cast<char>((static_cast<std::uint32_t>(count) >> shift) & 0xFF);
  }
  block += path;
  block.append(3, '\0');
  for (const std::string& word : words) block.append(word).append(1, '\0');
  for (const std::string& word : environment) block.append(word).append(1, '\0');
  return block;
}

}  // namespace korvantis::test
