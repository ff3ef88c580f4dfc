#include <gmock/gmock.h>
#include <limits>
#include <memory>
#include <stdexcept>

#include "bridge/BridgeListener.h"
#include "support/ScriptedSockets.h"

namespace korvantis {
namespace {

using test::NoMoreClients;
using test::ScriptedSockets;
using testing::ElementsAre;
using testing::IsEmpty;
using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;

constexpr std::uint32_t ownUser = 501;
constexpr std::uint32_t otherUser = 502;
constexpr int server = 3;
constexpr int client = 7;

/// A listener over scripted sockets whose accept loop runs when the test says so.
class BridgeListenerTest : public testing::Test {
 protected:
  ScriptedSockets sockets;
  std::vector<std::function<void()>> queued;
  std::vector<std::pair<std::string, Json>> requests;
  OrderedJson reply{{"cpuPercent", 1.5}};
  std::function<void()> whileAnswering = [] {};
  bool hasThreads = true;
  std::shared_ptr<BridgeListener> listener = listenerAt("/tmp/bridge.sock");

  std::shared_ptr<BridgeListener> listenerAt(const std::string& path) {
    PlatformCalls calls;
    calls.sockets = sockets.calls();
    calls.posix.getuid = [] { return ownUser; };
    calls.workQueues.asyncUtility = [this](std::function<void()> work) {
      sockets.log.emplace_back("asyncUtility");
      if (hasThreads) queued.push_back(std::move(work));
      return hasThreads;
    };
    return std::make_shared<BridgeListener>(
        calls, path, [this](const std::string& command, const Json& arguments) {
          sockets.log.push_back("provider " + command);
          requests.emplace_back(command, arguments);
          whileAnswering();
          return reply;
        });
  }

  /// Starts the listener and lets it serve all clients of the script.
  void serve() {
    listener->start();
    ASSERT_EQ(queued.size(), 1U);
    sockets.log.clear();
    EXPECT_THROW(queued.front()(), NoMoreClients);
    EXPECT_THAT(sockets.complaints, IsEmpty());
  }

  /// Serves one client of the same user that sends these pieces; gives what it gets.
  std::string answerTo(std::deque<std::string> pieces) {
    sockets.clients = {client};
    sockets.peers = {{client, ownUser}};
    sockets.pieces[client] = std::move(pieces);
    serve();
    return sockets.written[client];
  }

  void expectAnsweredAsStatus(const std::string& request) {
    EXPECT_EQ(answerTo({request}), "{\"cpuPercent\":1.5}\n");
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].first, "status");
  }
};

TEST_F(BridgeListenerTest, MakingItOpensNothing) {
  EXPECT_THAT(sockets.log, IsEmpty());
  EXPECT_FALSE(listener->isRunning());
  EXPECT_EQ(listener->serverFD(), -1);
  EXPECT_EQ(listener->socketPath, "/tmp/bridge.sock");
}

TEST_F(BridgeListenerTest, StartTakesItsStepsInOrderAndIsClosedToOthersBeforeAnybodyCanConnect) {
  listener->start();
  EXPECT_THAT(sockets.log,
              ElementsAre("unlink /tmp/bridge.sock", "socket 1 1 0", "bind 3 /tmp/bridge.sock 106",
                          "chmod /tmp/bridge.sock 600", "listen 3 8", "asyncUtility"));
  EXPECT_THAT(sockets.complaints, IsEmpty());
  EXPECT_TRUE(listener->isRunning());
  EXPECT_EQ(listener->serverFD(), server);
}

TEST_F(BridgeListenerTest, ASecondStartDoesNothing) {
  listener->start();
  sockets.log.clear();
  listener->start();
  EXPECT_THAT(sockets.log, IsEmpty());
}

TEST_F(BridgeListenerTest, NothingToUnlinkAndNoModeToSetAreNoHindrance) {
  sockets.failing = {"unlink", "chmod"};
  listener->start();
  EXPECT_TRUE(listener->isRunning());
}

TEST_F(BridgeListenerTest, WithoutASocketThereIsNoBridge) {
  sockets.failing = {"socket"};
  listener->start();
  EXPECT_THAT(sockets.log, ElementsAre("unlink /tmp/bridge.sock", "socket 1 1 0"));
  EXPECT_FALSE(listener->isRunning());
  EXPECT_EQ(listener->serverFD(), -1);
}

TEST_F(BridgeListenerTest, AFailedBindClosesTheSocketAndIsSilent) {
  sockets.failing = {"bind"};
  listener->start();
  EXPECT_THAT(sockets.log, ElementsAre("unlink /tmp/bridge.sock", "socket 1 1 0",
                                       "bind 3 /tmp/bridge.sock 106", "close 3"));
  EXPECT_FALSE(listener->isRunning());
  EXPECT_EQ(listener->serverFD(), -1);
}

TEST_F(BridgeListenerTest, AFailedListenClosesTheSocketAndIsSilent) {
  sockets.failing = {"listen"};
  listener->start();
  EXPECT_EQ(sockets.log.back(), "close 3");
  EXPECT_THAT(queued, IsEmpty());
  EXPECT_FALSE(listener->isRunning());
}

TEST_F(BridgeListenerTest, APathOf104BytesBeforeTheClosingZeroMeansNoBridge) {
  const std::string path = "/" + std::string(103, 'p');
  listener = listenerAt(path);
  listener->start();
  EXPECT_THAT(sockets.log, ElementsAre("unlink " + path, "socket 1 1 0", "close 3"));
  EXPECT_FALSE(listener->isRunning());
}

TEST_F(BridgeListenerTest, APathOf103BytesBeforeTheClosingZeroFits) {
  const std::string path = "/" + std::string(102, 'p');
  listener = listenerAt(path);
  listener->start();
  EXPECT_EQ(sockets.log[2], "bind 3 " + path + " 106");
  EXPECT_TRUE(listener->isRunning());
}

TEST_F(BridgeListenerTest, TheLoopEndsAtOnceWhenTheListenerHasGoneBeforeItBegan) {
  listener->start();
  sockets.log.clear();
  listener.reset();
  queued.front()();
  EXPECT_THAT(sockets.log, IsEmpty()) << "and the socket stays open: nothing closes it";
}

TEST_F(BridgeListenerTest, TheLoopKeepsTheListenerForAsLongAsItRuns) {
  sockets.clients = {client, 8};
  sockets.pieces[client] = {"{}"};
  sockets.pieces[8] = {"{}"};
  const std::weak_ptr<BridgeListener> weakly = listener;
  std::vector<bool> isThere;
  whileAnswering = [&] {
    listener.reset();
    isThere.push_back(!weakly.expired());
  };
  serve();
  EXPECT_THAT(isThere, ElementsAre(true, true));
  EXPECT_TRUE(weakly.expired());
}

TEST_F(BridgeListenerTest, AFailedAcceptGoesRoundAgain) {
  sockets.clients = {-1, -1, client};
  sockets.pieces[client] = {"{}"};
  serve();
  EXPECT_THAT(sockets.log, ElementsAre("accept 3", "accept 3", "accept 3", "getpeereid 7", "read 7",
                                       "provider status", "write 7", "close 7", "accept 3"));
}

TEST_F(BridgeListenerTest, RequestsAreServedStrictlyOneAfterTheOther) {
  sockets.clients = {7, 8};
  sockets.peers = {{7, ownUser}, {8, ownUser}};
  sockets.pieces[7] = {R"({"command":"top"})"};
  sockets.pieces[8] = {R"({"command":"ports"})"};
  serve();
  EXPECT_THAT(sockets.log, ElementsAre("accept 3", "getpeereid 7", "read 7", "provider top",
                                       "write 7", "close 7", "accept 3", "getpeereid 8", "read 8",
                                       "provider ports", "write 8", "close 8", "accept 3"));
}

TEST_F(BridgeListenerTest, APeerOfAnotherUserGetsAClosedConnectionAndNoBytes) {
  sockets.clients = {client};
  sockets.peers = {{client, otherUser}};
  sockets.pieces[client] = {"{}"};
  serve();
  EXPECT_THAT(sockets.log, ElementsAre("accept 3", "getpeereid 7", "close 7", "accept 3"));
  EXPECT_THAT(requests, IsEmpty());
}

TEST_F(BridgeListenerTest, RootIsServed) {
  sockets.clients = {client};
  sockets.peers = {{client, 0}};
  sockets.pieces[client] = {"{}"};
  serve();
  EXPECT_EQ(sockets.written[client], "{\"cpuPercent\":1.5}\n");
}

TEST_F(BridgeListenerTest, APeerThatTheSystemCanNotNameIsServed) {
  sockets.clients = {client};
  sockets.pieces[client] = {"{}"};
  serve();
  EXPECT_EQ(sockets.written[client], "{\"cpuPercent\":1.5}\n");
}

TEST_F(BridgeListenerTest, AnEmptyReadClosesWithoutAReply) {
  EXPECT_EQ(answerTo({}), "");
  EXPECT_THAT(sockets.log,
              ElementsAre("accept 3", "getpeereid 7", "read 7", "close 7", "accept 3"));
  EXPECT_THAT(requests, IsEmpty());
}

TEST_F(BridgeListenerTest, AFailedReadClosesWithoutAReply) {
  sockets.failing = {"read"};
  EXPECT_EQ(answerTo({"{}"}), "");
  EXPECT_THAT(requests, IsEmpty());
}

TEST_F(BridgeListenerTest, TheWholeRequestIsHandedOnItsCommandIncluded) {
  EXPECT_EQ(answerTo({"{\"command\":\"top\",\"limit\":5}\n"}), "{\"cpuPercent\":1.5}\n");
  EXPECT_THAT(requests,
              ElementsAre(std::pair<std::string, Json>("top", {{"command", "top"}, {"limit", 5}})));
  EXPECT_THAT(sockets.readSizes, ElementsAre(8192U));
}

TEST_F(BridgeListenerTest, TheLineFeedIsNotSearchedFor) {
  EXPECT_EQ(answerTo({R"({"command":"ports"})"}), "{\"cpuPercent\":1.5}\n");
  EXPECT_EQ(requests.at(0).first, "ports");
}

TEST_F(BridgeListenerTest, ARequestOfMoreThan8192BytesIsCutAndAnsweredAsStatus) {
  const std::string padding(8192, 'x');
  expectAnsweredAsStatus(R"({"command":"ports","padding":")" + padding + "\"}\n");
  EXPECT_EQ(requests[0].second, Json::object());
  EXPECT_EQ(std::ranges::count(sockets.log, "read 7"), 1) << "there is no second read";
}

TEST_F(BridgeListenerTest, ARequestOf8192BytesIsReadWhole) {
  std::string request = R"({"command":"ports","padding":")";
  request.append(8192 - request.size() - 2, 'x').append("\"}");
  ASSERT_EQ(request.size(), 8192U);
  answerTo({request});
  EXPECT_EQ(requests.at(0).first, "ports");
}

TEST_F(BridgeListenerTest, ARequestThatArrivesInTwoSegmentsIsJudgedByTheFirstAlone) {
  EXPECT_EQ(answerTo({R"({"command":)", R"("ports"})"}), "{\"cpuPercent\":1.5}\n");
  EXPECT_EQ(requests.at(0).first, "status");
  EXPECT_EQ(std::ranges::count(sockets.log, "read 7"), 1);
}

TEST_F(BridgeListenerTest, AnEmptyObjectIsAnsweredAsStatus) {
  expectAnsweredAsStatus("{}\n");
}

TEST_F(BridgeListenerTest, AListIsAnsweredAsStatus) {
  expectAnsweredAsStatus(R"([{"command":"ports"}])");
  EXPECT_EQ(requests[0].second, Json::object());
}

TEST_F(BridgeListenerTest, PlainTextIsAnsweredAsStatus) {
  expectAnsweredAsStatus("ports\n");
  EXPECT_EQ(requests[0].second, Json::object());
}

TEST_F(BridgeListenerTest, ABareJSONTextIsAnsweredAsStatus) {
  expectAnsweredAsStatus("\"ports\"\n");
}

TEST_F(BridgeListenerTest, ACommandThatIsANumberIsAnsweredAsStatus) {
  expectAnsweredAsStatus(R"({"command":7,"limit":5})");
  EXPECT_EQ(requests[0].second, Json({{"command", 7}, {"limit", 5}})) << "the map stays whole";
}

TEST_F(BridgeListenerTest, TwoObjectsInOneReadAreNoRequest) {
  expectAnsweredAsStatus("{\"command\":\"ports\"}\n{\"command\":\"top\"}\n");
}

TEST_F(BridgeListenerTest, ARequestWithBadUTF8IsAnsweredAsStatus) {
  expectAnsweredAsStatus("{\"command\":\"por\xFFts\"}");
}

TEST_F(BridgeListenerTest, WithoutAThreadToServeThemNoClientsAreLetIn) {
  hasThreads = false;
  listener->start();
  EXPECT_FALSE(listener->isRunning());
  EXPECT_EQ(listener->serverFD(), -1);
  EXPECT_EQ(sockets.log.back(), "close 3");
}

TEST_F(BridgeListenerTest, AWholeRequestWithAZeroByteBehindItIsAnsweredAsStatus) {
  expectAnsweredAsStatus(std::string("{\"command\":\"ports\"}\0more", 24));
}

TEST_F(BridgeListenerTest, ZeroBytesAndDeepNestingAreAnsweredAsStatus) {
  expectAnsweredAsStatus(std::string("{\"command\":\0\"ports\"}", 20));
  requests.clear();
  queued.clear();
  sockets.written.clear();
  listener = listenerAt("/tmp/bridge.sock");
  expectAnsweredAsStatus(std::string(8192, '['));
}

TEST_F(BridgeListenerTest, AReplyWithAnInfiniteNumberClosesTheConnectionWithoutAByte) {
  reply = {{"list", {1, {{"deep", std::numeric_limits<double>::infinity()}}}}};
  EXPECT_EQ(answerTo({"{}"}), "");
  EXPECT_EQ(sockets.log.at(4), "close 7");
}

TEST_F(BridgeListenerTest, AReplyWithNoNumberClosesTheConnectionWithoutAByte) {
  reply = {{"cpuPercent", std::numeric_limits<double>::quiet_NaN()}};
  EXPECT_EQ(answerTo({"{}"}), "");
}

TEST_F(BridgeListenerTest, AReplyWithBadUTF8IsRepaired) {
  reply = {{"name", "half\xE2\x82"}};
  EXPECT_EQ(answerTo({"{}"}), "{\"name\":\"half\xEF\xBF\xBD\"}\n");
}

TEST_F(BridgeListenerTest, TheReplyIsCompactAndItsKeysStandAsTheyWerePutIn) {
  reply = {{"z", 1}, {"a", {true, nullptr}}, {"m", "line\nfeed"}};
  EXPECT_EQ(answerTo({"{}"}), "{\"z\":1,\"a\":[true,null],\"m\":\"line\\nfeed\"}\n");
  EXPECT_EQ(std::ranges::count(sockets.log, "write 7"), 1) << "one write of the whole";
}

TEST_F(BridgeListenerTest, AFailedWriteIsIgnored) {
  sockets.failing = {"write"};
  answerTo({"{}"});
  EXPECT_EQ(sockets.log,
            (std::vector<std::string>{"accept 3", "getpeereid 7", "read 7", "provider status",
                                      "write 7", "close 7", "accept 3"}));
}

TEST_F(BridgeListenerTest, AProviderThatThrowsCostsItsClientTheReplyAndNobodyElse) {
  sockets.clients = {7, 8};
  sockets.pieces[7] = {"{}"};
  sockets.pieces[8] = {"{}"};
  whileAnswering = [this] {
    if (requests.size() == 1) throw std::runtime_error("no");
  };
  serve();
  EXPECT_EQ(sockets.written[7], "");
  EXPECT_EQ(sockets.written[8], "{\"cpuPercent\":1.5}\n");
  EXPECT_EQ(std::ranges::count(sockets.log, "close 7"), 1);
}

TEST_F(BridgeListenerTest, WithoutAPathItTakesTheUsualOne) {
  PlatformCalls calls;
  std::vector<std::string> made;
  calls.files.applicationSupportDirectories = [] { return std::vector<std::string>{"/support"}; };
  calls.files.createDirectory = [&](const std::string& path) {
    made.push_back(path);
    return true;
  };
  const BridgeListener usual(calls, BridgeProvider());
  EXPECT_EQ(usual.socketPath, "/support/Korvantis/bridge.sock");
  EXPECT_THAT(made, ElementsAre("/support/Korvantis"));
}

}  // namespace
}  // namespace korvantis
