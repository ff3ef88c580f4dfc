#include <atomic>
#include <csignal>
#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <sys/resource.h>

#include "bridge/BridgeSocket.h"
#include "bridge/LiveBridge.h"
#include "support/ChildProcess.h"
#include "support/UnixClient.h"

namespace korvantis {
namespace {

using test::bridgeSnapshot;
using test::ChildProcess;
using test::fixedProvider;
using test::LiveBridge;
using test::TemporaryFolder;
using test::UnixClient;
using testing::StartsWith;
using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;

Json replyTo(const std::string& command, const EngineSnapshot& snapshot = bridgeSnapshot()) {
  return Json::parse(BridgeCommands::reply(command, Json::object(), snapshot).text().value_or(""));
}

std::optional<Json> ask(const std::string& path, const std::string& command,
                        const OrderedJson& arguments = OrderedJson::object()) {
  return BridgeSocket::sendRequest(command, arguments, path);
}

/// Starts a listener that nobody lets go of before its thread has taken hold of it.
void serveForGood(const std::string& path) {
  static const auto kept =
      std::make_shared<BridgeListener>(systemPlatformCalls(), path, fixedProvider());
  kept->start();
}

TEST(BridgeLive, EveryCommandAndAliasIsAnsweredWhole) {
  const LiveBridge bridge(fixedProvider());
  for (const char* command :
       {"system_status", "status", "top_apps", "top", "ports", "projects", "idle_servers", "agents",
        "limits", "whats_wrong", "whats-wrong", "anything", ""}) {
    EXPECT_EQ(ask(bridge.socketPath(), command), replyTo(command)) << command;
  }
}

TEST(BridgeLive, TheBytesOnTheWireAreOneLineWithTheKeysInTheirOrder) {
  const LiveBridge bridge(fixedProvider());
  EXPECT_EQ(UnixClient(bridge.socketPath()).ask("{\"command\":\"whats-wrong\"}\n"),
            "{\"activeStrains\":[\"memory\",\"neuralEngine\"],\"idleServerCount\":1,"
            "\"topCPUApp\":\"node\"}\n");
}

TEST(BridgeLive, ArgumentsReachTheProvider) {
  const LiveBridge bridge(fixedProvider());
  EXPECT_EQ(ask(bridge.socketPath(), "top", {{"limit", 1}})->at("apps").size(), 1U);
}

TEST(BridgeLive, AResponseLargerThan8192BytesReachesTheClientWhole) {
  const EngineSnapshot snapshot = test::snapshotWithPorts(600);
  const LiveBridge bridge(fixedProvider(snapshot));
  ASSERT_GT(replyTo("ports", snapshot).dump().size(), 65536U);
  EXPECT_EQ(ask(bridge.socketPath(), "ports"), replyTo("ports", snapshot));
}

TEST(BridgeLive, ARequestOfMoreThan8192BytesIsAnsweredAsStatus) {
  const LiveBridge bridge(fixedProvider());
  EXPECT_EQ(ask(bridge.socketPath(), "ports", {{"padding", std::string(20'000, 'x')}}),
            replyTo("status"));
}

TEST(BridgeLive, PlainTextAndAListAreAnsweredAsStatus) {
  const LiveBridge bridge(fixedProvider());
  for (const char* text : {"ports\n", "[]\n", "{}\n", "\xFF\xFE\n", "{\"command\":9}\n"}) {
    EXPECT_EQ(Json::parse(UnixClient(bridge.socketPath()).ask(text)), replyTo("status")) << text;
  }
}

TEST(BridgeLive, ARequestThatArrivesInTwoSegmentsIsJudgedByTheFirstAlone) {
  const LiveBridge bridge(fixedProvider());
  const UnixClient client(bridge.socketPath());
  client.send("{\"command\":");
  const std::string reply = client.receive();
  EXPECT_EQ(Json::parse(reply), replyTo("status"));
  EXPECT_FALSE(client.send("\"ports\"}\n")) << "nobody is there any more";
}

TEST(BridgeLive, ASilentClientHoldsTheLoopUntilItDisconnects) {
  const LiveBridge bridge(fixedProvider());
  UnixClient silent(bridge.socketPath());
  const UnixClient waiting(bridge.socketPath());
  waiting.send("{\"command\":\"ports\"}\n");
  EXPECT_FALSE(waiting.hasNews(300)) << "the accepted socket has no time limit";
  silent.close();
  EXPECT_EQ(Json::parse(waiting.receive()), replyTo("ports"));
}

TEST(BridgeLive, AClientThatSendsNothingAndEndsGetsNoByte) {
  const LiveBridge bridge(fixedProvider());
  const UnixClient client(bridge.socketPath());
  client.endSending();
  EXPECT_EQ(client.receive(), "");
  EXPECT_EQ(ask(bridge.socketPath(), "status"), replyTo("status"));
}

TEST(BridgeLive, AClientThatHasGoneBeforeTheReplyHurtsNobody) {
  const LiveBridge bridge(fixedProvider(test::snapshotWithPorts(600)));
  for (int round = 0; round < 50; ++round) {
    UnixClient client(bridge.socketPath());
    client.send("{\"command\":\"ports\"}\n");
    client.close();
  }
  EXPECT_TRUE(ask(bridge.socketPath(), "ports")) << "a write into a closed socket ends no program";
}

TEST(BridgeLive, AReplyThatHasNoJSONFormClosesTheConnectionWithoutAByte) {
  EngineSnapshot snapshot = bridgeSnapshot();
  snapshot.system.cpuPercent = std::numeric_limits<double>::infinity();
  const LiveBridge bridge(fixedProvider(snapshot));
  EXPECT_EQ(UnixClient(bridge.socketPath()).ask("{\"command\":\"status\"}\n"), "");
  EXPECT_TRUE(ask(bridge.socketPath(), "ports"));
}

TEST(BridgeLive, NamesThatAreNoUTF8DoNotEndTheThread) {
  EngineSnapshot snapshot = bridgeSnapshot();
  snapshot.appGroups[0].name = "\xFF\xC3";
  const LiveBridge bridge(fixedProvider(snapshot));
  EXPECT_EQ(ask(bridge.socketPath(), "top")->at("apps").at(0).at("name"),
            "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_TRUE(ask(bridge.socketPath(), "status"));
}

TEST(BridgeLive, ARequestCanHoldAnyUTF8) {
  const LiveBridge bridge(fixedProvider());
  const std::string name = "ünï\u0000kødé \U0001F600 \" \\ \n";
  EXPECT_EQ(ask(bridge.socketPath(), name), Json({{"ok", true}, {"command", name}}));
}

TEST(BridgeLive, TheServingThreadYieldsToOthers) {
  std::atomic<int> niceness = -100;
  const LiveBridge bridge([&](const std::string&, const Json&) {
    niceness = ::getpriority(PRIO_PROCESS, 0);
    return OrderedJson::object();
  });
  ask(bridge.socketPath(), "status");
  EXPECT_GE(niceness, 10);
}

TEST(BridgeLive, AfterACrashTheStaleSocketIsReplacedAtTheNextStart) {
  const TemporaryFolder folder;
  const std::string path = folder.path("bridge.sock");
  ChildProcess crashed = ChildProcess::prepared([&] { serveForGood(path); });
  crashed.end();
  ASSERT_TRUE(std::filesystem::exists(path)) << "nobody takes it away";
  ASSERT_FALSE(ask(path, "status"));
  const auto next = std::make_shared<BridgeListener>(systemPlatformCalls(), path, fixedProvider());
  next->start();
  EXPECT_EQ(ask(path, "status"), replyTo("status"));
}

TEST(BridgeLive, ANewListenerTakesThePathEvenFromOneThatLives) {
  const LiveBridge first(fixedProvider());
  EngineSnapshot other;
  other.appGroups = {test::groupNamed("other", 1)};
  const auto second = std::make_shared<BridgeListener>(systemPlatformCalls(), first.socketPath(),
                                                       fixedProvider(other));
  second->start();
  EXPECT_EQ(ask(first.socketPath(), "whats_wrong")->at("topCPUApp"), "other");
}

TEST(BridgeLive, ANegativeLimitEndsTheProcess) {
  const TemporaryFolder folder;
  const std::string path = folder.path("bridge.sock");
  ChildProcess program = ChildProcess::prepared([&] {
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    serveForGood(path);
  });
  EXPECT_TRUE(ask(path, "top", {{"limit", 0}}));
  EXPECT_TRUE(ask(path, "ports", {{"limit", -1}}));
  EXPECT_FALSE(program.hasEnded());
  EXPECT_FALSE(ask(path, "top", {{"limit", -1}}));
  EXPECT_EQ(program.waitForSignal(), SIGABRT);
}

TEST(BridgeLive, ASocketPathOf103BytesIsServedAndOneOf104IsNoBridge) {
  const TemporaryFolder folder;
  for (const std::size_t length : {103U, 104U}) {
    const std::string path = folder.path(std::string(length - folder.path("").size(), 'p'));
    ASSERT_EQ(path.size(), length);
    const auto listener =
        std::make_shared<BridgeListener>(systemPlatformCalls(), path, fixedProvider());
    listener->start();
    EXPECT_EQ(listener->isRunning(), length == 103);
    EXPECT_EQ(ask(path, "status").has_value(), length == 103);
    EXPECT_EQ(std::filesystem::exists(path), length == 103);
  }
}

}  // namespace
}  // namespace korvantis
