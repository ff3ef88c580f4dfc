#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/OwnedSocket.h"

namespace korvantis {

/// A socket connected to the one that listens at `path`. Its waits (to connect, to read, to write)
/// last as long as `timeout` at most, each of them. Absent when nobody listens there, the path is
/// too long, or the system has no socket to give. `calls` must outlive it. Any thread.
std::optional<OwnedSocket> connectToUnixSocket(const SocketCalls& calls, std::string_view path,
                                               DarwinTimeValue timeout);

/// Reads pieces of up to 8192 bytes and hands each to `take`, until that gives false, the other end
/// closes, a wait takes too long or the system fails: all four end it alike.
void readPieces(const SocketCalls& calls, const OwnedSocket& socket,
                const std::function<bool(std::string_view piece)>& take);

}  // namespace korvantis
