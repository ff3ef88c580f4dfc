#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/ListeningSockets.h"

namespace korvantis {

/// One received piece of the kernel's answer about its sockets.
struct SocketDiagnosticsPart {
  std::vector<ListeningSocket> sockets;
  /// The answer is complete.
  bool isLast = false;
  /// The answer can't be used: an error, an interrupted dump, or damaged bytes.
  bool hasFailed = false;
};

/// Reads one piece. Only sockets in the listen state are given.
SocketDiagnosticsPart parseSocketDiagnostics(std::string_view bytes);

/// Asks the kernel for all listening TCP sockets of this network namespace, both versions of IP.
/// Absent when it does not answer in full; needs no privilege. Any thread.
std::optional<std::vector<ListeningSocket>> dumpListeningSockets();

}  // namespace korvantis
