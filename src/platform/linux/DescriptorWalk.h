#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/DarwinTypes.h"

namespace korvantis {

/// The open descriptors of a process as one walk over them found them.
struct DescriptorWalk {
  /// A descriptor that is a socket, and which socket.
  struct Socket {
    std::int32_t descriptor = 0;
    std::uint64_t inode = 0;

    bool operator==(const Socket&) const = default;
  };

  /// How many descriptors it was to find at most.
  std::size_t limit = 0;
  /// Ascending, each with its type.
  std::vector<proc_fdinfo> descriptors;
  /// Those of them that are sockets, ascending.
  std::vector<Socket> sockets;
  /// CPU time of the process before the walk.
  std::uint64_t cpuNanoseconds = 0;
  /// When it must be made again in any case, in steady seconds.
  double dueAt = 0;
};

}  // namespace korvantis
