#pragma once

#include <arpa/inet.h>
#include <cstdint>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace korvantis::test {

/// A TCP socket of this process on a free port of the loopback interface.
class ListeningPort {
 public:
  /// With `listens` false the port is bound but nobody waits for connections.
  explicit ListeningPort(bool isVersion6 = false, bool listens = true)
      : socket(::socket(isVersion6 ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_storage address{};
    socklen_t length = isVersion6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
    if (isVersion6) {
      auto& place = reinterpret_cast<sockaddr_in6&>(address);
      place.sin6_family = AF_INET6;
      place.sin6_addr = in6addr_loopback;
    } else {
      auto& place = reinterpret_cast<sockaddr_in&>(address);
      place.sin_family = AF_INET;
      place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    }
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    const bool isMade = socket >= 0 && ::bind(socket, generic, length) == 0 &&
                        (!listens || ::listen(socket, 8) == 0) &&
                        ::getsockname(socket, generic, &length) == 0;
    if (!isMade) throw std::runtime_error("no port");
    number = ntohs(isVersion6 ? reinterpret_cast<sockaddr_in6&>(address).sin6_port
                              : reinterpret_cast<sockaddr_in&>(address).sin_port);
  }
  ListeningPort(const ListeningPort&) = delete;
  ListeningPort& operator=(const ListeningPort&) = delete;
  ~ListeningPort() { close(); }

  /// The port.
  std::uint16_t port() const { return number; }

  /// The socket.
  int descriptor() const { return socket; }

  /// Closes the socket now.
  void close() {
    const int open = std::exchange(socket, -1);
    if (open >= 0) ::close(open);
  }

 private:
  int socket = -1;
  std::uint16_t number = 0;
};

}  // namespace korvantis::test
