#include "core/ProcessSample.h"

#include <algorithm>
#include <iterator>

namespace korvantis {

namespace {
constexpr std::uint16_t firstEphemeralPort = 49152;
}

std::vector<std::uint16_t> ProcessSample::servicePorts() const {
  std::vector<std::uint16_t> ports;
  std::copy_if(listeningPorts.begin(), listeningPorts.end(), std::back_inserter(ports),
               [](std::uint16_t port) { return port < firstEphemeralPort; });
  return ports;
}

}  // namespace korvantis
