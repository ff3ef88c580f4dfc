#include "bridge/BridgeListener.h"

#include <utility>

namespace korvantis {

BridgeListener::BridgeListener(std::string path, BridgeProvider answer)
    : socketPath(std::move(path)), provider(std::move(answer)) {}

void BridgeListener::start() {}

}  // namespace korvantis
