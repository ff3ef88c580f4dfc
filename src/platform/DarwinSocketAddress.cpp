#include "platform/DarwinSocketAddress.h"

#include <algorithm>

namespace korvantis {

std::optional<DarwinSocketAddress> socketAddressOf(std::string_view path) {
  DarwinSocketAddress address{};
  if (path.size() >= sizeof address.sun_path) return std::nullopt;
  address.sun_len = sizeof address;
  address.sun_family = DARWIN_AF_UNIX;
  std::ranges::copy(path, &address.sun_path[0]);
  return address;
}

}  // namespace korvantis
