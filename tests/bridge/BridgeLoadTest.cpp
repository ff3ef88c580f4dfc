#include <barrier>
#include <future>
#include <gmock/gmock.h>
#include <malloc.h>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include "bridge/BridgeMessage.h"
#include "bridge/BridgeSocket.h"
#include "bridge/LiveBridge.h"
#include "core/JsonValue.h"
#include "support/UnixClient.h"

namespace korvantis {
namespace {

using test::fixedProvider;
using test::LiveBridge;
using test::openDescriptors;
using test::UnixClient;
using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;

constexpr const char* portsRequest = "{\"command\":\"ports\"}\n";

std::string portsReply() {
  return BridgeCommands::reply("ports", Json::object(), test::bridgeSnapshot())
      .message()
      .value_or("");
}

TEST(BridgeLoad, AThousandConnectionsInARowAreAllServed) {
  const LiveBridge bridge(fixedProvider());
  const std::string reply = portsReply();
  const std::ptrdiff_t before = openDescriptors();
  int served = 0;
  for (int round = 0; round < 1000; ++round) {
    served += UnixClient(bridge.socketPath()).ask(portsRequest) == reply ? 1 : 0;
  }
  EXPECT_EQ(served, 1000);
  // The listener closes a client's descriptor a moment after the client has its answer.
  EXPECT_NEAR(static_cast<double>(openDescriptors()), static_cast<double>(before), 1);
}

TEST(BridgeLoad, OfFiftyClientsAtOnceThoseThatTheBacklogTakesAreServedWholeAndTheOthersRefused) {
  std::promise<void> released;
  std::promise<void> entered;
  bool isFirst = true;
  const LiveBridge bridge([&](const std::string& command, const Json& arguments) {
    if (std::exchange(isFirst, false)) {
      entered.set_value();
      released.get_future().wait();
    }
    return BridgeCommands::reply(command, arguments, test::bridgeSnapshot());
  });
  const UnixClient inService(bridge.socketPath());
  inService.send(portsRequest);
  entered.get_future().wait();

  std::vector<UnixClient> waiting;
  int refused = 0;
  for (int number = 1; number < 50; ++number) {
    UnixClient client(bridge.socketPath(), false);
    if (client.isConnected()) {
      client.send(portsRequest);
      waiting.push_back(std::move(client));
    } else {
      EXPECT_EQ(client.refusal(), EAGAIN);
      ++refused;
    }
  }
  // The kernel lets one more in than the backlog says.
  EXPECT_EQ(waiting.size(), 9U);
  EXPECT_EQ(refused, 40);

  released.set_value();
  EXPECT_EQ(inService.receive(), portsReply());
  for (const UnixClient& client : waiting) EXPECT_EQ(client.receive(), portsReply());
}

TEST(BridgeLoadConcurrent, FiftyClientsAtOnceEachGetAWholeReplyOrNone) {
  constexpr int clientCount = 50;
  const LiveBridge bridge(fixedProvider());
  const Json reply = Json::parse(portsReply());
  std::barrier together(clientCount);
  std::vector<std::optional<Json>> replies(clientCount);
  std::vector<std::thread> clients;
  for (auto& place : replies) {
    clients.emplace_back([&] {
      together.arrive_and_wait();
      place = BridgeSocket::sendRequest("ports", OrderedJson::object(), bridge.socketPath());
    });
  }
  for (std::thread& client : clients) client.join();
  int served = 0;
  for (const auto& received : replies) {
    if (!received) continue;
    ++served;
    EXPECT_EQ(*received, reply);
  }
  EXPECT_GE(served, 9);
}

/// Requests that are sound, and some that are nearly so.
const std::vector<std::string> seeds{
    "{\"command\":\"status\"}\n",
    "{\"command\":\"top\",\"limit\":3}\n",
    "{\"command\":\"top_apps\",\"limit\":2.5}\n",
    "{\"limit\":18446744073709551615,\"command\":\"top\"}\n",
    "{\"command\":\"ports\"}\n",
    "{\"command\":\"projects\",\"deep\":[[[[{\"a\":[null,true,1e300]}]]]]}\n",
    "{\"command\":\"idle_servers\"}\n",
    "{\"command\":\"agents\"}\n",
    "{\"command\":\"limits\"}\n",
    "{\"command\":\"whats-wrong\"}\n",
    "{\"command\":\"\\ud83d\\ude00 \\u0000\"}\n",
    "{\"command\":7}\n",
    "[{}]\n",
    "{}\n",
    "status\n"};

/// A request: a sound one, one with bytes changed, cut, doubled or glued together, or noise.
class RequestMaker {
 public:
  std::string next() {
    std::string request = seeds[below(seeds.size())];
    switch (below(6)) {
      case 0: return request;
      case 1: return noise(1 + below(200));
      case 2: request.resize(1 + below(request.size())); break;
      case 3: request += seeds[below(seeds.size())]; break;
      case 4: request.insert(below(request.size()), noise(below(40))); break;
      default: break;
    }
    for (std::size_t count = below(6); count > 0; --count) {
      request[below(request.size())] = static_cast<char>(below(256));
    }
    if (below(500) == 0) request.append(10'000, 'x');
    return request;
  }

 private:
  std::size_t below(std::size_t bound) { return generator() % bound; }

  std::string noise(std::size_t size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(below(256));
    return bytes;
  }

  std::mt19937_64 generator{20'240'817};
};

/// The one request that ends the program by rule.
bool hasNegativeLimit(const std::string& request) {
  const auto object = objectFromMessage(std::string_view(request).substr(0, 8192));
  if (!object || !object->contains("limit")) return false;
  return integerFromJson<std::int64_t>(object->at("limit")).value_or(0) < 0;
}

bool isWholeReply(const std::string& text) {
  return text.ends_with('\n') && text.find('\n') == text.size() - 1 && objectFromMessage(text);
}

TEST(BridgeLoad, AHundredThousandRandomAndMutatedRequestsLeaveNothingBehind) {
  const LiveBridge bridge(fixedProvider());
  RequestMaker maker;
  int served = 0;
  int left = 0;
  const auto serve = [&](int count) {
    for (int number = 0; number < count; ++number) {
      const std::string request = maker.next();
      if (hasNegativeLimit(request)) {
        ++left;
        continue;
      }
      const std::string reply = UnixClient(bridge.socketPath()).ask(request);
      served += isWholeReply(reply) ? 1 : 0;
    }
  };
  serve(5'000);
  const std::ptrdiff_t descriptors = openDescriptors();
  const std::size_t memory = ::mallinfo2().uordblks;
  serve(95'000);
  EXPECT_EQ(served + left, 100'000);
  EXPECT_LT(left, 100);
  EXPECT_NEAR(static_cast<double>(openDescriptors()), static_cast<double>(descriptors), 1);
  EXPECT_LT(::mallinfo2().uordblks, memory + 65536);
}

}  // namespace
}  // namespace korvantis
