#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "analysis/ContainerReply.h"
#include "core/RecordJson.h"
#include "core/Utf8.h"

namespace {

using namespace korvantis;  // NOLINT: one file, one namespace

/// What every container is, whatever an engine says.
bool isSound(const ContainerSample& container) {
  const auto isInvalid = [](std::uint16_t port) { return port == 0; };
  const bool arePortsSound = std::ranges::is_sorted(container.ports) &&
                             std::ranges::adjacent_find(container.ports) == container.ports.end() &&
                             std::ranges::none_of(container.ports, isInvalid);
  return arePortsSound && container.id.size() <= 48 && isValidUtf8(container.id) &&
         isValidUtf8(container.name) && container.cpuPercent == 0.4 &&
         container.memoryBytes == 67'108'864 && container.engine == "Docker" &&
         encodeJson(container).has_value();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const RandomCalls random{[](void* buffer, std::size_t count) { std::memset(buffer, 7, count); }};
  // NOLINTNEXTLINE: bytes are bytes
  const std::string_view reply(reinterpret_cast<const char*>(data), size);
  const auto containers = containersFromReply(reply, "Docker", random);
  if (containers && !std::ranges::all_of(*containers, isSound)) std::abort();
  return 0;
}
