#include "bridge/BridgeListener.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "bridge/BridgeMessage.h"
#include "bridge/BridgeSocket.h"
#include "platform/OwnedSocket.h"

namespace korvantis {

namespace {

constexpr int backlog = 8;
constexpr std::size_t requestBytes = 8192;
constexpr std::uint16_t ownerOnly = 0600;
constexpr std::uint32_t superuser = 0;
constexpr const char* usualCommand = "status";

std::string commandOf(const nlohmann::json& request) {
  const auto found = request.find("command");
  const bool isNamed = found != request.end() && found->is_string();
  return isNamed ? found->get<std::string>() : usualCommand;
}

}  // namespace

BridgeListener::BridgeListener(const PlatformCalls& calls, std::string path, BridgeProvider answer)
    : socketPath(std::move(path)),
      provider(std::move(answer)),
      sockets(calls.sockets),
      workQueues(calls.workQueues),
      posix(calls.posix) {}

BridgeListener::BridgeListener(const PlatformCalls& calls, BridgeProvider answer)
    : BridgeListener(calls, BridgeSocket::defaultSocketPath(calls.files), std::move(answer)) {}

void BridgeListener::start() {
  if (running) return;
  // What an earlier run left behind goes without further thought.
  sockets.unlink(socketPath.c_str());
  OwnedSocket listening(sockets, sockets.socket(DARWIN_AF_UNIX, DARWIN_SOCK_STREAM, 0));
  if (!listening) return;
  const auto address = socketAddressOf(socketPath);
  if (!address) return;
  if (sockets.bind(listening.number(), &*address, sizeof *address) != 0) return;
  // Nobody can connect before `listen`, so there is no moment in which others could.
  sockets.chmod(socketPath.c_str(), ownerOnly);
  if (sockets.listen(listening.number(), backlog) != 0) return;
  server = listening.release();
  running = true;
  const bool isServed = workQueues.asyncUtility([weakly = weak_from_this()] {
    if (const auto listener = weakly.lock()) listener->acceptClients();
  });
  if (isServed) return;
  // Without a thread, clients would be let in and wait for ever.
  running = false;
  sockets.close(std::exchange(server, -1));
}

void BridgeListener::acceptClients() const {
  while (running && server >= 0) {
    DarwinSocketAddress address{};
    std::uint32_t length = sizeof address;
    const int client = sockets.accept(server, &address, &length);
    if (client >= 0) serve(client);
  }
}

void BridgeListener::serve(int client) const {
  const OwnedSocket owned(sockets, client);
  if (!isWelcome(client)) return;
  try {
    answer(client);
  } catch (...) {
    // Whatever a provider throws, this client goes without a reply and the next one is served.
    return;
  }
}

/// The mode of the socket's file keeps others out already; this is the second guard. A system that
/// can't tell who is calling leaves it at the first.
bool BridgeListener::isWelcome(int client) const {
  std::uint32_t user = 0;
  std::uint32_t group = 0;
  if (sockets.getpeereid(client, &user, &group) != 0) return true;
  return user == superuser || user == posix.getuid();
}

/// Reads once and writes once. What can't be read as a request is the usual one.
void BridgeListener::answer(int client) const {
  std::array<char, requestBytes> buffer{};
  const std::int64_t count = sockets.read(client, buffer.data(), buffer.size());
  if (count < 1) return;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(count));
  const nlohmann::json request = objectFromMessage(text).value_or(nlohmann::json::object());
  const auto reply = provider(commandOf(request), request).message();
  if (reply) sockets.write(client, reply->data(), reply->size());
}

}  // namespace korvantis
