#include "platform/linux/ProcessStat.h"

#include <array>
#include <cstring>
#include <limits>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

// The kernel's PF_KTHREAD.
constexpr std::uint64_t kernelThreadFlag = 0x200000;

// The words after the name, by the field numbers of the manual page less 3.
constexpr std::size_t stateWord = 0;
constexpr std::size_t parentWord = 1;
constexpr std::size_t groupWord = 2;
constexpr std::size_t sessionWord = 3;
constexpr std::size_t flagsWord = 6;
constexpr std::size_t userTicksWord = 11;
constexpr std::size_t systemTicksWord = 12;
constexpr std::size_t niceWord = 16;
constexpr std::size_t threadCountWord = 17;
constexpr std::size_t startTicksWord = 19;
constexpr std::size_t residentPagesWord = 21;

using Words = std::array<std::string_view, residentPagesWord + 1>;

/// Reads number after number and remembers whether one was none.
struct WordReader {
  const Words& words;
  bool failed = false;

  std::uint64_t counter(std::size_t index) {
    const auto number = unsignedNumber(words[index]);
    failed = failed || !number;
    return number.value_or(0);
  }

  std::int32_t number32(std::size_t index) {
    const auto number = signedNumber(words[index]);
    using Limits = std::numeric_limits<std::int32_t>;
    const bool fits = number && *number >= Limits::min() && *number <= Limits::max();
    failed = failed || !fits;
    return fits ? static_cast<std::int32_t>(*number) : 0;
  }
};

/// `rfind`, which goes byte by byte, takes longer over such a text than all the rest.
std::size_t lastClosing(std::string_view text) {
  if (text.empty()) return std::string_view::npos;
  const void* const found = ::memrchr(text.data(), ')', text.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

std::optional<Words> wordsAfterName(std::string_view text) {
  Words words;
  for (std::size_t index = 0; index < words.size(); ++index) {
    words[index] = takeWord(text);
    // With nothing behind it the start time may be cut in the middle of its digits.
    if (index == startTicksWord && text.empty()) return std::nullopt;
  }
  if (words[stateWord].size() != 1) return std::nullopt;
  return words;
}

}  // namespace

std::optional<ProcessStat> parseProcessStat(std::string_view text) {
  // Only the name can hold a parenthesis, and it can hold several: it ends at the last one.
  const std::size_t open = text.find('(');
  const std::size_t close = lastClosing(text);
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
    return std::nullopt;
  }
  std::string_view front = text.substr(0, open);
  const auto pid = unsignedNumber(takeWord(front));
  const auto words = wordsAfterName(text.substr(close + 1));
  if (!pid || *pid > std::numeric_limits<std::int32_t>::max() || !words) return std::nullopt;

  WordReader reader{*words};
  ProcessStat stat;
  stat.pid = static_cast<std::int32_t>(*pid);
  stat.name = text.substr(open + 1, close - open - 1);
  stat.state = (*words)[stateWord].front();
  stat.parent = reader.number32(parentWord);
  stat.group = reader.number32(groupWord);
  stat.session = reader.number32(sessionWord);
  stat.isKernelThread = (reader.counter(flagsWord) & kernelThreadFlag) != 0;
  stat.userTicks = reader.counter(userTicksWord);
  stat.systemTicks = reader.counter(systemTicksWord);
  stat.nice = reader.number32(niceWord);
  stat.threadCount = reader.counter(threadCountWord);
  stat.startTicks = reader.counter(startTicksWord);
  stat.residentPages = unsignedNumber((*words)[residentPagesWord]).value_or(0);
  return reader.failed ? std::nullopt : std::optional(std::move(stat));
}

}  // namespace korvantis
