#include "bridge/BridgeSocket.h"

namespace korvantis {

std::string BridgeSocket::defaultSocketPath() {
  return {};
}

}  // namespace korvantis
