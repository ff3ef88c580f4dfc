#pragma once

#include <string>

#include "bridge/BridgeProvider.h"

namespace korvantis {

/// The server side of the local bridge: programs of the same user ask, the provider answers. For
/// now it only keeps what it is given; no socket is opened and nobody can connect.
class BridgeListener {
 public:
  /// Keeps where to listen and who answers; opens nothing.
  BridgeListener(std::string path, BridgeProvider answer);

  /// Begins to listen, once; a failure is silent. For now it opens nothing. Any thread.
  void start();

  /// Where the socket lies.
  const std::string socketPath;
  /// Who answers.
  const BridgeProvider provider;
};

}  // namespace korvantis
