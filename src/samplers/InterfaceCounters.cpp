#include "samplers/InterfaceCounters.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "platform/DarwinTypes.h"

namespace korvantis {
namespace {

/// The shortest message of an interface list, `if_msghdr`.
constexpr std::size_t leastMessageBytes = 112;
constexpr int deciding = DARWIN_IFF_UP | DARWIN_IFF_LOOPBACK;

template <typename Number>
Number numberAt(std::span<const std::byte> bytes, std::size_t offset) {
  Number value;  // NOLINT: filled below
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

}  // namespace

InterfaceCounters sumInterfaceCounters(std::span<const std::byte> messages) {
  InterfaceCounters sums;
  while (messages.size() >= leastMessageBytes) {
    const std::size_t length = numberAt<std::uint16_t>(messages, offsetof(if_msghdr2, ifm_msglen));
    if (length == 0) break;
    const auto type = numberAt<std::uint8_t>(messages, offsetof(if_msghdr2, ifm_type));
    if (type == RTM_IFINFO2 && messages.size() >= sizeof(if_msghdr2)) {
      const auto message = numberAt<if_msghdr2>(messages, 0);
      if ((message.ifm_flags & deciding) == DARWIN_IFF_UP) {
        sums.inBytes += message.ifm_data.ifi_ibytes;
        sums.outBytes += message.ifm_data.ifi_obytes;
      }
    }
    messages = messages.subspan(std::min(length, messages.size()));
  }
  return sums;
}

std::optional<InterfaceCounters> readInterfaceCounters(const SysctlCalls& calls) {
  constexpr std::array name{CTL_NET, DARWIN_PF_ROUTE, 0, 0, NET_RT_IFLIST2, 0};
  const auto length = static_cast<unsigned>(name.size());
  std::size_t size = 0;
  if (calls.sysctl(name.data(), length, nullptr, &size) != 0 || size < 1) return std::nullopt;
  std::vector<std::byte> buffer(size);
  if (calls.sysctl(name.data(), length, buffer.data(), &size) != 0) return std::nullopt;
  return sumInterfaceCounters(std::span(buffer).first(std::min(size, buffer.size())));
}

}  // namespace korvantis
