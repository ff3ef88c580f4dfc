#pragma once

#include <cerrno>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace korvantis::test {

/// The native address of a socket file.
inline sockaddr_un nativeSocketAddress(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) throw std::runtime_error("path too long: " + path);
  std::memcpy(&address.sun_path[0], path.data(), path.size());
  return address;
}

/// Sends all of `bytes`; false when the reader has gone.
inline bool sendAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

/// Everything that comes until the other end closes.
inline std::string receiveAll(int descriptor) {
  std::string text;
  std::string chunk(16384, '\0');
  for (;;) {
    const ssize_t got = ::read(descriptor, chunk.data(), chunk.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return text;
    text.append(chunk, 0, static_cast<std::size_t>(got));
  }
}

/// What has come up to now, after waiting for something to come.
inline std::string receiveOnce(int descriptor) {
  std::string chunk(16384, '\0');
  const ssize_t got = ::read(descriptor, chunk.data(), chunk.size());
  chunk.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return chunk;
}

/// A server on a real Unix socket with a thread of its own. It hands each client to `handler`, one
/// after the other, and closes it afterwards. It ends, with its socket file left behind, when the
/// object goes; a handler must come back once its client has gone.
class UnixServer {
 public:
  using Handler = std::function<void(int client)>;

  UnixServer(const std::string& path, Handler handler)
      : listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const sockaddr_un address = nativeSocketAddress(path);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    const bool isMade = listening >= 0 && ::bind(listening, generic, sizeof address) == 0 &&
                        ::listen(listening, 64) == 0;
    if (!isMade) throw std::runtime_error("cannot listen at " + path);
    thread = std::thread([number = listening, handle = std::move(handler)] {
      for (;;) {
        const int client = ::accept4(number, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0 && errno == EINTR) continue;
        if (client < 0) return;
        handle(client);
        ::close(client);
      }
    });
  }
  UnixServer(const UnixServer&) = delete;
  UnixServer& operator=(const UnixServer&) = delete;
  ~UnixServer() {
    ::shutdown(listening, SHUT_RDWR);
    thread.join();
    ::close(listening);
  }

 private:
  int listening;
  std::thread thread;
};

}  // namespace korvantis::test
