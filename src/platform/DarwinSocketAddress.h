#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace korvantis {

// The constants and structures of Darwin's sockets that we use. They bear names of their own, so
// that a file can include this header beside the system's.

inline constexpr int DARWIN_AF_UNIX = 1;
inline constexpr int DARWIN_SOCK_STREAM = 1;
inline constexpr int DARWIN_SOL_SOCKET = 0xFFFF;
inline constexpr int DARWIN_SO_SNDTIMEO = 0x1005;
inline constexpr int DARWIN_SO_RCVTIMEO = 0x1006;

/// Darwin's `timeval`.
struct DarwinTimeValue {
  std::int64_t tv_sec;
  std::int32_t tv_usec;
};
static_assert(sizeof(DarwinTimeValue) == 16);

/// Darwin's `sockaddr_un`: the address of a Unix-domain socket.
struct DarwinSocketAddress {
  std::uint8_t sun_len;
  std::uint8_t sun_family;
  char sun_path[104];
};
static_assert(sizeof(DarwinSocketAddress) == 106);

/// The address of the socket at `path`. Absent for a path that with its closing zero byte is
/// longer than 104 bytes, also on a system with more room: programs meet at the same paths
/// everywhere. Any thread.
std::optional<DarwinSocketAddress> socketAddressOf(std::string_view path);

}  // namespace korvantis
