#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "platform/FileManagerCalls.h"
#include "platform/SocketCalls.h"

namespace korvantis {

/// Where the local bridge is found, and how a program asks it.
class BridgeSocket {
 public:
  /// The path of the bridge's socket: "bridge.sock" in the program's support folder, or in a
  /// temporary one where there is none. Makes that folder, for this user alone; the path is the
  /// same when it can't. Any thread.
  static std::string defaultSocketPath(const FileManagerCalls& files = systemFileManagerCalls());

  /// Asks the bridge at `socketPath` and waits for its reply. `arguments` is an object whose keys
  /// travel beside the command. Absent when nobody answers with a whole object; a wait for the next
  /// piece ends after 1.5 seconds. Any thread.
  static std::optional<nlohmann::json> sendRequest(
      const std::string& command,
      const nlohmann::ordered_json& arguments = nlohmann::ordered_json::object(),
      const std::string& socketPath = defaultSocketPath(),
      const SocketCalls& calls = systemSocketCalls());
};

}  // namespace korvantis
