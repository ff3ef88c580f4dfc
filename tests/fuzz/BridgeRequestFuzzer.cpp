#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "bridge/BridgeCommands.h"
#include "bridge/BridgeListener.h"
#include "bridge/BridgeMessage.h"
#include "bridge/BridgeSnapshot.h"
#include "core/JsonValue.h"

namespace {

using namespace korvantis;  // NOLINT: one file, one namespace

constexpr std::size_t readBytes = 8192;
constexpr int server = 3;
constexpr int client = 4;

/// Ends the accept loop, which ends for nothing else.
struct NoMoreClients {};

/// One client whose request is `text`, and what it gets.
struct Exchange {
  std::string_view text;
  int accepts = 0;
  int reads = 0;
  int closes = 0;
  std::string reply;
};

std::int64_t readRequest(Exchange& exchange, void* buffer, std::size_t size) {
  if (size != readBytes) std::abort();
  ++exchange.reads;
  const std::size_t count = std::min(size, exchange.text.size());
  if (count > 0) std::memcpy(buffer, exchange.text.data(), count);
  return static_cast<std::int64_t>(count);
}

PlatformCalls callsOf(Exchange& exchange) {
  PlatformCalls calls;
  calls.posix.getuid = [] { return 501U; };
  calls.workQueues.asyncUtility = [](const std::function<void()>& work) {
    work();
    return true;
  };
  SocketCalls& sockets = calls.sockets;
  sockets.unlink = [](const char*) { return 0; };
  sockets.socket = [](int, int, int) { return server; };
  sockets.bind = [](int, const DarwinSocketAddress*, std::uint32_t) { return 0; };
  sockets.chmod = [](const char*, std::uint16_t) { return 0; };
  sockets.listen = [](int, int) { return 0; };
  sockets.accept = [&](int, DarwinSocketAddress*, std::uint32_t*) {
    if (exchange.accepts++ > 0) throw NoMoreClients();
    return client;
  };
  sockets.getpeereid = [](int, std::uint32_t* user, std::uint32_t*) {
    *user = 501;
    return 0;
  };
  sockets.read = [&](int, void* buffer, std::size_t size) {
    return readRequest(exchange, buffer, size);
  };
  sockets.write = [&](int, const void* buffer, std::size_t size) {
    exchange.reply.append(static_cast<const char*>(buffer), size);
    return static_cast<std::int64_t>(size);
  };
  sockets.close = [&](int) {
    ++exchange.closes;
    return 0;
  };
  return calls;
}

/// The one request that ends the program by rule.
bool hasNegativeLimit(std::string_view text) {
  const auto request = objectFromMessage(text.substr(0, readBytes));
  if (!request || !request->contains("limit")) return false;
  return integerFromJson<std::int64_t>(request->at("limit")).value_or(0) < 0;
}

}  // namespace

/// Whatever one client sends, it gets one whole object on one line (nothing if it sent nothing),
/// its connection is closed once, and the next client is waited for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const EngineSnapshot snapshot = test::bridgeSnapshot();
  // NOLINTNEXTLINE: bytes are bytes
  Exchange exchange{.text = {reinterpret_cast<const char*>(data), size}, .reply = {}};
  if (hasNegativeLimit(exchange.text)) return 0;
  const auto listener = std::make_shared<BridgeListener>(
      callsOf(exchange), "/bridge.sock",
      [](const std::string& command, const nlohmann::json& arguments) {
        return BridgeCommands::reply(command, arguments, snapshot);
      });
  try {
    listener->start();
    std::abort();
  } catch (const NoMoreClients&) {
    if (exchange.reads != 1 || exchange.closes != 1 || exchange.accepts != 2) std::abort();
  }
  if (size == 0 && exchange.reply.empty()) return 0;
  const std::string& reply = exchange.reply;
  if (!reply.ends_with('\n') || reply.find('\n') != reply.size() - 1) std::abort();
  if (!objectFromMessage(reply)) std::abort();
  return 0;
}
