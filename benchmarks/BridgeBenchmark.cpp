// What a request to the bridge costs beyond the tick that it must do: the real listener with a
// snapshot at hand, beside a trivial echo server, in one run. Each iteration is a whole round trip:
// connect, send, receive the line, close, as clients do. The echo sends back what it got, so
// "ports" is set beside an echo of a short request too; its reply is longer, and that is part of
// its cost.

#include <array>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include "bridge/BridgeCommands.h"
#include "bridge/BridgeListener.h"
#include "bridge/BridgeSnapshot.h"
#include "support/TemporaryFolder.h"
#include "support/UnixClient.h"
#include "support/UnixServer.h"

namespace korvantis {
namespace {

constexpr int rows = 60;
const std::string statusRequest = "{\"command\":\"status\"}\n";
const std::string portsRequest = "{\"command\":\"ports\"}\n";

void roundTrips(benchmark::State& state, const std::string& path, const std::string& request) {
  std::size_t replyBytes = 0;
  for (auto _ : state) {
    const test::UnixClient client(path);
    client.send(request);
    replyBytes = client.receiveLine().size();
  }
  if (replyBytes == 0) state.SkipWithError("no reply");
  state.counters["reply"] = static_cast<double>(replyBytes);
}

void echo(benchmark::State& state) {
  static const test::TemporaryFolder folder;
  const std::string path = folder.path("echo.sock");
  static const test::UnixServer server(path, [](int client) {
    // As the bridge's own thread does, so that both wait alike for a busy machine.
    ::setpriority(PRIO_PROCESS, 0, 10);
    std::array<char, 8192> buffer{};
    const ssize_t count = ::read(client, buffer.data(), buffer.size());
    if (count > 0) test::sendAll(client, {buffer.data(), static_cast<std::size_t>(count)});
  });
  roundTrips(state, path, statusRequest);
}

/// The real listener; its tick is a snapshot that is there already.
const std::string& bridgePath() {
  static const test::TemporaryFolder folder;
  static const std::string path = folder.path("bridge.sock");
  static const auto snapshot = std::make_shared<const EngineSnapshot>([] {
    EngineSnapshot made = test::bridgeSnapshot();
    made.listeningPorts = test::snapshotWithPorts(rows).listeningPorts;
    return made;
  }());
  static const auto listener = std::make_shared<BridgeListener>(
      systemPlatformCalls(), path, [](const std::string& command, const nlohmann::json& arguments) {
        return BridgeCommands::reply(command, arguments, *snapshot);
      });
  listener->start();
  return path;
}

void bridgeStatus(benchmark::State& state) {
  roundTrips(state, bridgePath(), statusRequest);
}
void bridgeSixtyPorts(benchmark::State& state) {
  roundTrips(state, bridgePath(), portsRequest);
}

BENCHMARK(echo)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(bridgeStatus)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(bridgeSixtyPorts)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime()->UseRealTime();

}  // namespace
}  // namespace korvantis
