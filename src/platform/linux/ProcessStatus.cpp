#include "platform/linux/ProcessStatus.h"

#include <limits>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

std::optional<std::array<std::uint32_t, 4>> fourIdentities(std::string_view text,
                                                           std::string_view name) {
  auto line = lineField(text, name);
  if (!line) return std::nullopt;
  std::array<std::uint32_t, 4> identities{};
  for (std::uint32_t& identity : identities) {
    const auto number = unsignedNumber(takeWord(*line));
    if (!number || *number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    identity = static_cast<std::uint32_t>(*number);
  }
  return identities;
}

}  // namespace

std::optional<ProcessStatus> parseProcessStatus(std::string_view text) {
  const auto threadGroup = numberField(text, "Tgid");
  const auto users = fourIdentities(text, "Uid");
  if (!threadGroup || *threadGroup > std::numeric_limits<std::int32_t>::max() || !users) {
    return std::nullopt;
  }
  ProcessStatus status;
  status.threadGroup = static_cast<std::int32_t>(*threadGroup);
  status.users = *users;
  status.groups = fourIdentities(text, "Gid").value_or(status.groups);
  status.anonymousBytes = kilobytesField(text, "RssAnon").value_or(0);
  status.swapBytes = kilobytesField(text, "VmSwap").value_or(0);
  status.voluntarySwitches = numberField(text, "voluntary_ctxt_switches").value_or(0);
  return status;
}

}  // namespace korvantis
