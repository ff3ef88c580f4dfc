#pragma once

#include <string>

namespace korvantis {

/// Where the local bridge is found.
class BridgeSocket {
 public:
  /// The path of the bridge's socket in the program's support folder. For now empty: there is no
  /// place to listen at yet. Any thread.
  static std::string defaultSocketPath();
};

}  // namespace korvantis
