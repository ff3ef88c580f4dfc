#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "bridge/BridgeProvider.h"
#include "platform/PlatformCalls.h"

namespace korvantis {

/// The server side of the local bridge: programs of the same user ask, the provider answers. One
/// thread serves them strictly in turn, one request a connection. There is no stop: once started
/// it listens until the program ends, and the socket's file stays behind until the next start.
class BridgeListener : public std::enable_shared_from_this<BridgeListener> {
 public:
  /// Keeps where to listen and who answers; opens nothing.
  BridgeListener(const PlatformCalls& calls, std::string path, BridgeProvider answer);

  /// The same at the bridge's usual path.
  BridgeListener(const PlatformCalls& calls, BridgeProvider answer);

  BridgeListener(const BridgeListener&) = delete;
  BridgeListener& operator=(const BridgeListener&) = delete;
  ~BridgeListener() = default;

  /// Takes the path, whoever had it before, and begins to serve on a thread of utility priority,
  /// which keeps this object from then on. Does nothing when it is running already. A failure is
  /// silent: the program goes on without a bridge. Needs a `shared_ptr` that owns this object. One
  /// thread at a time.
  void start();

  /// Whether it listens; once true, for good.
  bool isRunning() const { return running; }

  /// The listening socket; -1 until it listens.
  std::int32_t serverFD() const { return server; }

  /// Where the socket lies.
  const std::string socketPath;
  /// Who answers.
  const BridgeProvider provider;

 private:
  void acceptClients() const;
  void serve(int client) const;
  bool isWelcome(int client) const;
  void answer(int client) const;

  const SocketCalls sockets;
  const WorkQueueCalls workQueues;
  const PosixCalls posix;

  // Written once, before the serving thread begins.
  std::int32_t server = -1;
  bool running = false;
};

}  // namespace korvantis
