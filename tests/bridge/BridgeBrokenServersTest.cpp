#include <chrono>
#include <gmock/gmock.h>
#include <string>
#include <thread>

#include "bridge/BridgeSocket.h"
#include "support/TemporaryFolder.h"
#include "support/UnixServer.h"

namespace korvantis {
namespace {

using test::receiveAll;
using test::receiveOnce;
using test::sendAll;
using test::TemporaryFolder;
using test::UnixServer;
using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;
using std::chrono::milliseconds;

class BridgeBrokenServers : public testing::Test {
 protected:
  const TemporaryFolder folder;
  const std::string path = folder.path("bridge.sock");

  std::optional<Json> ask() const {
    return BridgeSocket::sendRequest("status", OrderedJson::object(), path);
  }

  /// What the client makes of a server that hears the request and then does this.
  std::optional<Json> askOneThat(const std::function<void(int client)>& answers) const {
    const UnixServer server(path, [&](int client) {
      EXPECT_EQ(receiveOnce(client), "{\"command\":\"status\"}\n");
      answers(client);
    });
    return ask();
  }
};

TEST_F(BridgeBrokenServers, NobodyThere) {
  EXPECT_FALSE(ask());
}

TEST_F(BridgeBrokenServers, AFileThatIsNoSocket) {
  folder.write("bridge.sock", "{}\n");
  EXPECT_FALSE(ask());
}

TEST_F(BridgeBrokenServers, ASocketThatNobodyListensAt) {
  {
    const UnixServer gone(path, [](int) {});
  }
  EXPECT_FALSE(ask());
}

TEST_F(BridgeBrokenServers, OneThatClosesAtOnce) {
  const UnixServer server(path, [](int) {});
  for (int round = 0; round < 100; ++round) EXPECT_FALSE(ask());
}

TEST_F(BridgeBrokenServers, OneThatClosesAfterTheRequest) {
  EXPECT_FALSE(askOneThat([](int) {}));
}

TEST_F(BridgeBrokenServers, OneThatDripsBytesIsHeardToTheEnd) {
  EXPECT_EQ(askOneThat([](int client) {
              for (const char byte : std::string("{\"ok\":true,\"command\":\"x\"}\n")) {
                std::this_thread::sleep_for(milliseconds(5));
                sendAll(client, {&byte, 1});
              }
              receiveAll(client);
            }),
            Json({{"ok", true}, {"command", "x"}}));
}

TEST_F(BridgeBrokenServers, OneThatNeverAnswersCostsOneAndAHalfSeconds) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(askOneThat([](int client) { receiveAll(client); }));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(1500));
}

TEST_F(BridgeBrokenServers, OneThatAnswersWithoutALineFeedAndClosesIsHeard) {
  EXPECT_EQ(askOneThat([](int client) { sendAll(client, "{\"ok\":true}"); }), Json({{"ok", true}}));
}

TEST_F(BridgeBrokenServers, OneThatAnswersWithoutALineFeedAndStaysIsHeardAfterTheWait) {
  EXPECT_EQ(askOneThat([](int client) {
              sendAll(client, "{\"ok\":true}");
              receiveAll(client);
            }),
            Json({{"ok", true}}));
}

TEST_F(BridgeBrokenServers, OneThatStopsHalfWayFails) {
  EXPECT_FALSE(askOneThat([](int client) { sendAll(client, "{\"ok\":tr"); }));
}

TEST_F(BridgeBrokenServers, OneThatAnswersWithTenMegabytesIsHeardWhole) {
  const std::string text(10'000'000, 'x');
  const auto reply =
      askOneThat([&](int client) { sendAll(client, "{\"text\":\"" + text + "\"}\n"); });
  ASSERT_TRUE(reply);
  EXPECT_EQ(reply->at("text").get_ref<const std::string&>().size(), text.size());
}

TEST_F(BridgeBrokenServers, OneThatAnswersWithAMillionOpenBracketsFails) {
  const std::string text(1'000'000, '[');
  EXPECT_FALSE(askOneThat([&](int client) { sendAll(client, text + "\n"); }));
}

TEST_F(BridgeBrokenServers, OneThatAnswersWithAMillionNestedListsIsHeard) {
  const std::string deep = std::string(1'000'000, '[') + std::string(1'000'000, ']');
  const auto reply = askOneThat([&](int client) { sendAll(client, "{\"a\":" + deep + "}\n"); });
  EXPECT_TRUE(reply && reply->at("a").is_array());
}

TEST_F(BridgeBrokenServers, OneThatAnswersWithNoiseFails) {
  EXPECT_FALSE(askOneThat([](int client) { sendAll(client, "\xFF\x00\xFE{}\n"); }));
  std::filesystem::remove(path);
  EXPECT_FALSE(askOneThat([](int client) { sendAll(client, "HTTP/1.1 200 OK\r\n\r\n{}"); }));
}

TEST_F(BridgeBrokenServers, OneThatTakesNoMoreConnectionsCostsTheWaitOnly) {
  const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = test::nativeSocketAddress(path);
  ASSERT_EQ(::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listening, 0), 0);
  const int filler = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(::connect(filler, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_FALSE(ask());
  ::close(filler);
  ::close(listening);
}

}  // namespace
}  // namespace korvantis
