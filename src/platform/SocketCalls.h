#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "platform/DarwinSocketAddress.h"

namespace korvantis {

/// Unix-domain sockets in Darwin's shape: 0, a count or a descriptor on success, -1 on failure.
/// Descriptors are not inherited by programs that this one starts, and writing into a socket whose
/// reader has gone is a failure, never a signal. Any thread.
struct SocketCalls {
  std::function<int(int family, int type, int protocol)> socket;
  /// Gives the socket its path. Where the system can, the new file is for its owner alone (mode
  /// 0600) from its first moment on.
  std::function<int(int descriptor, const DarwinSocketAddress* address, std::uint32_t length)> bind;
  std::function<int(const char* path, std::uint16_t mode)> chmod;
  std::function<int(int descriptor, int backlog)> listen;
  /// Waits for the next client.
  std::function<int(int descriptor, DarwinSocketAddress* address, std::uint32_t* length)> accept;
  std::function<int(int descriptor, const DarwinSocketAddress* address, std::uint32_t length)>
      connect;
  /// Sets `DARWIN_SO_RCVTIMEO` or `DARWIN_SO_SNDTIMEO` at `DARWIN_SOL_SOCKET` to a
  /// `DarwinTimeValue`; there are no other options.
  std::function<int(int descriptor, int level, int option, const void* value, std::uint32_t length)>
      setsockopt;
  std::function<std::int64_t(int descriptor, void* buffer, std::size_t size)> read;
  std::function<std::int64_t(int descriptor, const void* buffer, std::size_t size)> write;
  std::function<int(int descriptor)> close;
  /// The effective user and group of the process at the other end.
  std::function<int(int descriptor, std::uint32_t* user, std::uint32_t* group)> getpeereid;
  std::function<int(const char* path)> unlink;
};

/// The operating system's own sockets.
SocketCalls systemSocketCalls();

}  // namespace korvantis
