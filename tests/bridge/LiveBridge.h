#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "bridge/BridgeCommands.h"
#include "bridge/BridgeListener.h"
#include "bridge/BridgeSnapshot.h"
#include "platform/PlatformCalls.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A real listener in a folder of its own. Like every listener it serves until the program ends.
class LiveBridge {
 public:
  explicit LiveBridge(BridgeProvider provider)
      : listener(std::make_shared<BridgeListener>(systemPlatformCalls(), socketPath(),
                                                  std::move(provider))) {
    listener->start();
  }

  std::string socketPath() const { return folder.path("bridge.sock"); }

  const TemporaryFolder folder;
  const std::shared_ptr<BridgeListener> listener;
};

/// Answers like the real one, out of a snapshot that never changes.
inline BridgeProvider fixedProvider(EngineSnapshot snapshot = bridgeSnapshot()) {
  return [fixed = std::make_shared<const EngineSnapshot>(std::move(snapshot))](
             const std::string& command, const nlohmann::json& arguments) {
    return BridgeCommands::reply(command, arguments, *fixed);
  };
}

/// How many descriptors this process holds.
inline std::ptrdiff_t openDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                       std::filesystem::directory_iterator());
}

}  // namespace korvantis::test
