#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/ContainerSample.h"
#include "platform/PlatformCalls.h"

namespace korvantis {

/// Lists the running containers of the machine's container engine by asking it over its Unix
/// socket. Of several engines that run it shows the first that has containers. Any thread.
class ContainerSampler {
 public:
  explicit ContainerSampler(const PlatformCalls& calls);

  /// The containers of the last poll; empty when no engine answers. Polls when the last poll began
  /// at least 5 seconds ago, and then blocks the caller while the engines answer: each of an
  /// engine's waits ends after 350 ms. In between it does nothing but tell what it knows.
  std::vector<ContainerSample> sampleContainers();

 private:
  std::vector<ContainerSample> pollEngines() const;
  std::optional<std::vector<ContainerSample>> queryDockerSocket(const std::string& socketPath,
                                                                const std::string& engine) const;

  const Clock clock;
  const RandomCalls random;
  const FileManagerCalls files;
  const SocketCalls sockets;

  /// Guards the fields below. Never held while an engine is asked.
  std::mutex lock;
  std::vector<ContainerSample> cachedContainers;
  /// When the last poll began, in seconds since 1970.
  double lastPollTime = 0;
};

}  // namespace korvantis
