#include "bridge/BridgeSocket.h"

#include <string_view>
#include <vector>

#include "bridge/BridgeMessage.h"
#include "platform/UnixSocketClient.h"

namespace korvantis {

namespace {

constexpr DarwinTimeValue patience{.tv_sec = 1, .tv_usec = 500'000};

/// `folder` without a slash at its end, unless it is all there is.
std::string withoutFinalSlash(std::string folder) {
  if (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  return folder;
}

std::string receivedText(const SocketCalls& calls, const OwnedSocket& socket) {
  std::string text;
  readPieces(calls, socket, [&text](std::string_view piece) {
    text += piece;
    return piece.find('\n') == std::string_view::npos;
  });
  return text;
}

}  // namespace

std::string BridgeSocket::defaultSocketPath(const FileManagerCalls& files) {
  const std::vector<std::string> folders = files.applicationSupportDirectories();
  const std::string parent =
      withoutFinalSlash(folders.empty() ? files.temporaryDirectory() : folders.front());
  const std::string folder = parent + "/Korvantis";
  files.createDirectory(folder);
  return folder + "/bridge.sock";
}

std::optional<nlohmann::json> BridgeSocket::sendRequest(const std::string& command,
                                                        const nlohmann::ordered_json& arguments,
                                                        const std::string& socketPath,
                                                        const SocketCalls& calls) {
  const auto socket = connectToUnixSocket(calls, socketPath, patience);
  if (!socket || !arguments.is_object()) return std::nullopt;
  nlohmann::ordered_json request = arguments;
  request["command"] = command;
  const auto message = messageFromObject(request);
  if (!message) return std::nullopt;
  if (calls.write(socket->number(), message->data(), message->size()) < 1) return std::nullopt;
  return objectFromMessage(receivedText(calls, *socket));
}

}  // namespace korvantis
