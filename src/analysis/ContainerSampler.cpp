#include "analysis/ContainerSampler.h"

#include <array>
#include <string_view>

#include "analysis/ContainerReply.h"
#include "platform/UnixSocketClient.h"

namespace korvantis {

namespace {

constexpr double pollSeconds = 5.0;
constexpr DarwinTimeValue patience{.tv_sec = 0, .tv_usec = 350'000};
constexpr std::size_t mostReplyBytes = std::size_t{512} << 10;
// Version 1.0, so that the engine sends no chunks and closes at the end.
constexpr std::string_view request =
    "GET /containers/json HTTP/1.0\r\nHost: localhost\r\nConnection: close\r\n\r\n";
static_assert(request.size() == 69);

struct Engine {
  bool isInHome;
  const char* path;
  const char* label;
};

/// In probing order.
constexpr std::array<Engine, 4> engines{{{true, "/.orbstack/run/docker.sock", "OrbStack"},
                                         {true, "/.docker/run/docker.sock", "Docker Desktop"},
                                         {true, "/.colima/default/docker.sock", "Colima"},
                                         {false, "/var/run/docker.sock", "Docker"}}};

}  // namespace

ContainerSampler::ContainerSampler(const PlatformCalls& calls)
    : clock(calls.clock), random(calls.random), files(calls.files), sockets(calls.sockets) {}

std::vector<ContainerSample> ContainerSampler::sampleContainers() {
  const double now = clock.now();
  {
    const std::scoped_lock guard(lock);
    if (now - lastPollTime < pollSeconds) return cachedContainers;
    // Before the work: a poll that fails or takes long is not repeated at once.
    lastPollTime = now;
  }
  std::vector<ContainerSample> containers = pollEngines();
  const std::scoped_lock guard(lock);
  cachedContainers = containers;
  return containers;
}

std::vector<ContainerSample> ContainerSampler::pollEngines() const {
  const std::string home = files.homeDirectoryForCurrentUser();
  for (const Engine& engine : engines) {
    const std::string path = engine.isInHome ? home + engine.path : engine.path;
    if (!files.fileExistsAtPath(path)) continue;
    auto containers = queryDockerSocket(path, engine.label);
    if (containers && !containers->empty()) return std::move(*containers);
  }
  return {};
}

/// The containers of one engine; absent when it could not be read.
std::optional<std::vector<ContainerSample>> ContainerSampler::queryDockerSocket(
    const std::string& socketPath, const std::string& engine) const {
  const auto socket = connectToUnixSocket(sockets, socketPath, patience);
  if (!socket) return std::nullopt;
  if (sockets.write(socket->number(), request.data(), request.size()) < 1) return std::nullopt;
  std::string reply;
  readPieces(sockets, *socket, [&reply](std::string_view piece) {
    reply += piece;
    return reply.size() <= mostReplyBytes;
  });
  return containersFromReply(reply, engine, random);
}

}  // namespace korvantis
