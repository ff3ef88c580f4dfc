#include "platform/UnixSocketClient.h"

#include <array>

namespace korvantis {

namespace {

constexpr std::size_t pieceBytes = 8192;

}  // namespace

std::optional<OwnedSocket> connectToUnixSocket(const SocketCalls& calls, std::string_view path,
                                               DarwinTimeValue timeout) {
  OwnedSocket socket(calls, calls.socket(DARWIN_AF_UNIX, DARWIN_SOCK_STREAM, 0));
  if (!socket) return std::nullopt;
  // Before connecting: the way in can be crowded too.
  for (const int option : {DARWIN_SO_RCVTIMEO, DARWIN_SO_SNDTIMEO}) {
    calls.setsockopt(socket.number(), DARWIN_SOL_SOCKET, option, &timeout, sizeof timeout);
  }
  const auto address = socketAddressOf(path);
  if (!address) return std::nullopt;
  if (calls.connect(socket.number(), &*address, sizeof *address) != 0) return std::nullopt;
  return socket;
}

void readPieces(const SocketCalls& calls, const OwnedSocket& socket,
                const std::function<bool(std::string_view piece)>& take) {
  std::array<char, pieceBytes> buffer{};
  for (;;) {
    const std::int64_t count = calls.read(socket.number(), buffer.data(), buffer.size());
    if (count < 1) return;
    if (!take(std::string_view(buffer.data(), static_cast<std::size_t>(count)))) return;
  }
}

}  // namespace korvantis
