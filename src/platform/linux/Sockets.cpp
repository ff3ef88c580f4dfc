#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/SocketCalls.h"

namespace korvantis {
namespace {

static_assert(AF_UNIX == DARWIN_AF_UNIX);
static_assert(SOCK_STREAM == DARWIN_SOCK_STREAM);
static_assert(sizeof(sockaddr_un::sun_path) >= sizeof(DarwinSocketAddress::sun_path));

int failWith(int error) {
  errno = error;
  return -1;
}

/// Calls again when a signal came in between: a child that ends is no reason to lose a message.
template <typename Call>
auto untilUninterrupted(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

/// The same address as this system writes it. An empty path would be taken for an address that is
/// no file at all and open to everybody, so there is none for it.
std::optional<sockaddr_un> nativeAddress(const DarwinSocketAddress* address, std::uint32_t length) {
  const bool isWhole = address != nullptr && length == sizeof *address &&
                       address->sun_family == DARWIN_AF_UNIX && address->sun_path[0] != '\0';
  if (!isWhole) return std::nullopt;
  sockaddr_un native{};
  native.sun_family = AF_UNIX;
  std::memcpy(&native.sun_path[0], &address->sun_path[0], sizeof address->sun_path);
  return native;
}

int bindSocket(int descriptor, const DarwinSocketAddress* address, std::uint32_t length) {
  const auto native = nativeAddress(address, length);
  if (!native) return failWith(EINVAL);
  // The file gets the mode that the socket has already. The creation mask would do it too, but for
  // all threads at once.
  ::fchmod(descriptor, S_IRUSR | S_IWUSR);
  return ::bind(descriptor, reinterpret_cast<const sockaddr*>(&*native), sizeof *native);
}

int connectSocket(int descriptor, const DarwinSocketAddress* address, std::uint32_t length) {
  const auto native = nativeAddress(address, length);
  if (!native) return failWith(EINVAL);
  return untilUninterrupted([&] {
    return ::connect(descriptor, reinterpret_cast<const sockaddr*>(&*native), sizeof *native);
  });
}

/// Clients that call have no path of their own, so their address says nothing.
int acceptClient(int descriptor, DarwinSocketAddress* address, std::uint32_t* length) {
  if (address != nullptr) {
    *address = {};
    address->sun_family = DARWIN_AF_UNIX;
  }
  if (length != nullptr) *length = std::min<std::uint32_t>(*length, 2);
  return untilUninterrupted([&] { return ::accept4(descriptor, nullptr, nullptr, SOCK_CLOEXEC); });
}

int setTimeout(int descriptor, int level, int option, const void* value, std::uint32_t length) {
  const bool isKnown =
      level == DARWIN_SOL_SOCKET && (option == DARWIN_SO_RCVTIMEO || option == DARWIN_SO_SNDTIMEO);
  if (!isKnown) return failWith(ENOPROTOOPT);
  DarwinTimeValue asked{};
  if (value == nullptr || length != sizeof asked) return failWith(EINVAL);
  std::memcpy(&asked, value, sizeof asked);
  const timeval native{.tv_sec = asked.tv_sec, .tv_usec = asked.tv_usec};
  return ::setsockopt(descriptor, SOL_SOCKET,
                      option == DARWIN_SO_RCVTIMEO ? SO_RCVTIMEO : SO_SNDTIMEO, &native,
                      sizeof native);
}

int peerOf(int descriptor, std::uint32_t* user, std::uint32_t* group) {
  ucred peer{};
  socklen_t length = sizeof peer;
  if (::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &length) != 0) return -1;
  *user = peer.uid;
  *group = peer.gid;
  return 0;
}

}  // namespace

SocketCalls systemSocketCalls() {
  SocketCalls calls;
  calls.socket = [](int family, int type, int protocol) {
    return ::socket(family, type | SOCK_CLOEXEC, protocol);
  };
  calls.bind = bindSocket;
  calls.chmod = [](const char* path, std::uint16_t mode) { return ::chmod(path, mode); };
  calls.listen = ::listen;
  calls.accept = acceptClient;
  calls.connect = connectSocket;
  calls.setsockopt = setTimeout;
  calls.read = [](int descriptor, void* buffer, std::size_t size) -> std::int64_t {
    return untilUninterrupted([&] { return ::read(descriptor, buffer, size); });
  };
  calls.write = [](int descriptor, const void* buffer, std::size_t size) -> std::int64_t {
    return untilUninterrupted([&] { return ::send(descriptor, buffer, size, MSG_NOSIGNAL); });
  };
  calls.close = ::close;
  calls.getpeereid = peerOf;
  calls.unlink = ::unlink;
  return calls;
}

}  // namespace korvantis
