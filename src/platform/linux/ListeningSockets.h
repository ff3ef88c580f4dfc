#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korvantis {

/// One TCP socket that waits for connections.
struct ListeningSocket {
  /// What tells it from all others; the number in "socket:[...]".
  std::uint64_t inode = 0;
  /// The local port in the machine's own byte order.
  std::uint16_t port = 0;
  std::uint32_t userID = 0;
  bool isVersion6 = false;

  bool operator==(const ListeningSocket&) const = default;
};

/// The listening sockets in the text of `/proc/net/tcp` or `/proc/net/tcp6`. Lines that are
/// damaged or cut are left out.
std::vector<ListeningSocket> parseSocketTable(std::string_view text, bool isVersion6);

/// The inode in the link of a descriptor, "socket:[1234]"; absent for everything else.
std::optional<std::uint64_t> socketInode(std::string_view link);

/// All listening sockets of one moment.
class ListeningSockets {
 public:
  explicit ListeningSockets(const std::vector<ListeningSocket>& sockets);

  /// The listening socket with this inode; absent when it does not listen.
  std::optional<ListeningSocket> find(std::uint64_t inode) const;

  /// Whether any of them belongs to this user.
  bool hasAny(std::uint32_t userID) const;

 private:
  std::unordered_map<std::uint64_t, ListeningSocket> byInode;
};

}  // namespace korvantis
