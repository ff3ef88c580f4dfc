#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bridge/BridgeReply.h"
#include "core/AppLimit.h"
#include "core/EngineSnapshot.h"
#include "core/MutedApp.h"

namespace korvantis {

/// The commands of the local bridge; an object of it serves as a `BridgeProvider`. docs/bridge.md
/// lists commands and replies.
class BridgeCommands {
 public:
  /// Samples everything once, like `OstrelEngine::sampleTick`.
  using SampleTick =
      std::function<EngineSnapshot(const std::vector<AppLimit>& appLimits,
                                   const std::vector<MutedApp>& mutedApps, double hotCelsius)>;

  explicit BridgeCommands(SampleTick sampleTick);

  /// Takes a tick of its own, whatever the command, and answers from it. It knows none of the
  /// user's limits and mutes, and takes 82 degrees for hot.
  BridgeReply operator()(const std::string& command, const nlohmann::json& arguments) const;

  /// The reply to a command out of `snapshot`, keys in the order in which they are documented. A
  /// name that is no command is answered with "ok" and the name. A negative "limit" ends the
  /// program: asking for fewer applications than none is a fault of the caller that must not go
  /// unseen. Any thread.
  static BridgeReply reply(const std::string& command, const nlohmann::json& arguments,
                           const EngineSnapshot& snapshot);

 private:
  SampleTick tick;
};

}  // namespace korvantis
