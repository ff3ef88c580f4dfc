#include "platform/linux/NetworkDeviceTable.h"

#include <optional>
#include <utility>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

std::optional<LinkCounters> parseDevice(std::string_view line) {
  const std::size_t colon = line.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  std::string_view label = line.substr(0, colon);
  std::string_view figures = line.substr(colon + 1);
  const auto received = unsignedNumber(takeWord(figures));
  for (int skipped = 0; skipped < 7; ++skipped) takeWord(figures);
  const auto sent = unsignedNumber(takeWord(figures));
  LinkCounters link;
  link.name = takeWord(label);
  if (link.name.empty() || !received || !sent) return std::nullopt;
  link.receivedBytes = *received;
  link.sentBytes = *sent;
  return link;
}

}  // namespace

std::vector<LinkCounters> parseNetworkDeviceTable(std::string_view text) {
  std::vector<LinkCounters> links;
  while (text.find('\n') != std::string_view::npos) {
    auto link = parseDevice(takeLine(text));
    if (!link) continue;
    link->index = static_cast<int>(links.size()) + 1;
    links.push_back(std::move(*link));
  }
  return links;
}

}  // namespace korvantis
