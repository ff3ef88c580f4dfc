#include "analysis/AgentTokenLogs.h"

#include <algorithm>
#include <optional>

namespace korvantis {

namespace {

constexpr int mostLogs = 40;
constexpr std::int64_t leastTokensToday = 24000;
constexpr std::int64_t leastTokensAWeek = 120000;
constexpr std::uint64_t bytesPerTokenOfTheWeek = 18;
/// The day is taken for a sixth of the week.
constexpr std::uint64_t bytesPerTokenOfToday = 108;

}  // namespace

std::uint64_t bytesOfTokenLogs(const FileManagerCalls& files, const std::string& folder) {
  if (!files.fileExistsAtPath(folder)) return 0;
  const std::optional<DirectoryEnumerator> walk = files.enumeratorAtPath(folder);
  if (!walk) return 0;
  std::uint64_t total = 0;
  int logs = 0;
  for (auto path = (*walk)(); path; path = (*walk)()) {
    if (!path->ends_with(".jsonl")) continue;
    const std::optional<std::uint64_t> size = files.fileSize(folder + "/" + *path);
    if (!size) continue;
    total += *size;
    if (++logs == mostLogs) break;
  }
  return total;
}

AgentTokens tokensOfLogBytes(std::uint64_t bytes) {
  const auto tokens = [bytes](std::uint64_t bytesPerToken, std::int64_t least) {
    return std::max(static_cast<std::int64_t>(bytes / bytesPerToken), least);
  };
  return {.today = tokens(bytesPerTokenOfToday, leastTokensToday),
          .week = tokens(bytesPerTokenOfTheWeek, leastTokensAWeek)};
}

}  // namespace korvantis
