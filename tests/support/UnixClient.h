#pragma once

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include "support/UnixServer.h"

namespace korvantis::test {

/// A client of a Unix socket that speaks in bytes.
class UnixClient {
 public:
  /// Connects; one that `waits` does so until there is room for it. See `isConnected`.
  explicit UnixClient(const std::string& path, bool waits = true)
      : descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | (waits ? 0 : SOCK_NONBLOCK), 0)) {
    const sockaddr_un address = nativeSocketAddress(path);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    connected = ::connect(descriptor, generic, sizeof address) == 0;
    error = connected ? 0 : errno;
    ::fcntl(descriptor, F_SETFL, 0);
  }
  UnixClient(UnixClient&& other) noexcept
      : descriptor(std::exchange(other.descriptor, -1)),
        connected(other.connected),
        error(other.error) {}
  UnixClient& operator=(UnixClient&&) = delete;
  UnixClient(const UnixClient&) = delete;
  UnixClient& operator=(const UnixClient&) = delete;
  ~UnixClient() { close(); }

  bool isConnected() const { return connected; }
  /// Why it is not connected; 0 when it is.
  int refusal() const { return error; }

  bool send(std::string_view bytes) const { return sendAll(descriptor, bytes); }
  /// Says that nothing more will come from here.
  void endSending() const { ::shutdown(descriptor, SHUT_WR); }
  /// Everything that comes until the other end closes.
  std::string receive() const { return receiveAll(descriptor); }

  /// What comes up to a line feed, or until the other end closes.
  std::string receiveLine() const {
    std::string line;
    while (!line.ends_with('\n')) {
      const std::string piece = receiveOnce(descriptor);
      if (piece.empty()) break;
      line += piece;
    }
    return line;
  }

  /// Whether something (also an end) comes within these milliseconds.
  bool hasNews(int milliseconds) const {
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    return ::poll(&waiting, 1, milliseconds) == 1;
  }

  /// Sends a text and gives everything that comes back.
  std::string ask(std::string_view text) const { return send(text) ? receive() : ""; }

  void close() {
    const int open = std::exchange(descriptor, -1);
    if (open >= 0) ::close(open);
  }

 private:
  int descriptor = -1;
  bool connected = false;
  int error = 0;
};

}  // namespace korvantis::test
