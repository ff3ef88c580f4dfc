#include <gmock/gmock.h>
#include <limits>
#include <sys/stat.h>

#include "bridge/BridgeSocket.h"
#include "support/ScriptedSockets.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ScriptedSockets;
using testing::ElementsAre;
using testing::IsEmpty;
using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;

constexpr int descriptor = 3;

class BridgeSocketTest : public testing::Test {
 protected:
  ScriptedSockets sockets;

  std::optional<Json> send(const std::string& command,
                           const OrderedJson& arguments = OrderedJson::object()) {
    return BridgeSocket::sendRequest(command, arguments, "/tmp/bridge.sock", sockets.calls());
  }

  /// What is made of a reply that comes in these pieces.
  std::optional<Json> receive(std::deque<std::string> pieces) {
    sockets.pieces[descriptor] = std::move(pieces);
    return send("status");
  }
};

TEST_F(BridgeSocketTest, SendRequestTakesItsStepsInOrder) {
  sockets.pieces[descriptor] = {"{\"ok\":true}\n"};
  EXPECT_EQ(send("hello"), Json({{"ok", true}}));
  // 65535 is the level, 4102 and 4101 the time limits to receive and to send.
  EXPECT_THAT(sockets.log,
              ElementsAre("socket 1 1 0", "setsockopt 3 65535 4102 1 500000",
                          "setsockopt 3 65535 4101 1 500000", "connect 3 /tmp/bridge.sock 106",
                          "write 3", "read 3", "close 3"));
  EXPECT_THAT(sockets.complaints, IsEmpty());
  EXPECT_THAT(sockets.readSizes, ElementsAre(8192U));
}

TEST_F(BridgeSocketTest, TheRequestIsOneCompactLineWithTheArgumentsBesideTheCommand) {
  send("top", {{"limit", 5}});
  EXPECT_EQ(sockets.written[descriptor], "{\"limit\":5,\"command\":\"top\"}\n");
}

TEST_F(BridgeSocketTest, WithoutArgumentsThereIsOnlyTheCommand) {
  send("ports");
  send("ports", nullptr);
  EXPECT_EQ(sockets.written[descriptor], "{\"command\":\"ports\"}\n") << "null is no map";
}

TEST_F(BridgeSocketTest, AnArgumentNamedCommandIsOverwritten) {
  send("top", {{"command", "ports"}, {"limit", 1}});
  EXPECT_EQ(sockets.written[descriptor], "{\"command\":\"top\",\"limit\":1}\n");
}

TEST_F(BridgeSocketTest, ArgumentsThatJSONHasNoFormForFail) {
  EXPECT_FALSE(send("top", {{"limit", std::numeric_limits<double>::quiet_NaN()}}));
  EXPECT_THAT(sockets.written, IsEmpty());
  EXPECT_EQ(sockets.log.back(), "close 3");
}

TEST_F(BridgeSocketTest, ArgumentsThatAreNoMapFail) {
  EXPECT_FALSE(send("top", OrderedJson::array({1})));
  EXPECT_EQ(sockets.log.back(), "close 3");
}

TEST_F(BridgeSocketTest, TimeLimitsThatCanNotBeSetAreIgnored) {
  sockets.failing = {"setsockopt"};
  EXPECT_EQ(receive({"{}\n"}), Json::object());
}

TEST_F(BridgeSocketTest, WithoutASocketThereIsNoReply) {
  sockets.failing = {"socket"};
  EXPECT_FALSE(receive({"{}\n"}));
  EXPECT_THAT(sockets.log, ElementsAre("socket 1 1 0"));
}

TEST_F(BridgeSocketTest, ARefusedConnectionFailsAndIsClosed) {
  sockets.failing = {"connect"};
  EXPECT_FALSE(receive({"{}\n"}));
  EXPECT_EQ(sockets.log.back(), "close 3");
  EXPECT_THAT(sockets.written, IsEmpty());
}

TEST_F(BridgeSocketTest, APathOf104BytesFailsAndIsClosed) {
  const std::string path = "/" + std::string(103, 'p');
  EXPECT_FALSE(BridgeSocket::sendRequest("status", OrderedJson::object(), path, sockets.calls()));
  EXPECT_THAT(sockets.log, ElementsAre("socket 1 1 0", testing::StartsWith("setsockopt"),
                                       testing::StartsWith("setsockopt"), "close 3"));
}

TEST_F(BridgeSocketTest, AWriteBelowOneByteFails) {
  sockets.writeResult = 0;
  EXPECT_FALSE(receive({"{}\n"}));
  sockets.writeResult = -1;
  EXPECT_FALSE(receive({"{}\n"}));
  EXPECT_EQ(sockets.log.back(), "close 3");
  EXPECT_EQ(std::ranges::count(sockets.log, "read 3"), 0);
}

TEST_F(BridgeSocketTest, AShortWriteIsNotContinued) {
  sockets.writeResult = 1;
  EXPECT_EQ(receive({"{}\n"}), Json::object());
  EXPECT_EQ(std::ranges::count(sockets.log, "write 3"), 1);
}

TEST_F(BridgeSocketTest, ReadingEndsAtTheFirstPieceThatHoldsALineFeed) {
  EXPECT_EQ(receive({"{\"a\"", ":1}", "\n", "never read"}), Json({{"a", 1}}));
  EXPECT_EQ(std::ranges::count(sockets.log, "read 3"), 3);
}

TEST_F(BridgeSocketTest, AReplyWithoutALineFeedCountsWhenTheStreamEnds) {
  EXPECT_EQ(receive({"{\"a\":", "1}"}), Json({{"a", 1}}));
}

TEST_F(BridgeSocketTest, AReplyLargerThanOneReadIsParsedWhole) {
  const std::string text(20'000, 'x');
  EXPECT_EQ(receive({"{\"text\":\"" + text + "\"}\n"}), Json({{"text", text}}));
  EXPECT_EQ(std::ranges::count(sockets.log, "read 3"), 3);
}

TEST_F(BridgeSocketTest, AnEmptyReplyFails) {
  EXPECT_FALSE(receive({}));
  EXPECT_EQ(sockets.log.back(), "close 3");
}

TEST_F(BridgeSocketTest, AReplyThatIsNoObjectFails) {
  for (const char* text : {"[1]\n", "7\n", "null\n", "\"text\"\n", "{\"a\":}\n", "\n", "{\"a\":1\n",
                           "{} {}\n", "{\"a\":\"\xFF\"}\n"}) {
    EXPECT_FALSE(receive({text})) << text;
  }
}

TEST(BridgeSocketPath, LiesInTheFirstSupportFolderWhichIsMade) {
  FileManagerCalls files;
  std::vector<std::string> made;
  files.applicationSupportDirectories = [] {
    return std::vector<std::string>{"/first", "/second"};
  };
  files.createDirectory = [&](const std::string& path) {
    made.push_back(path);
    return true;
  };
  EXPECT_EQ(BridgeSocket::defaultSocketPath(files), "/first/Korvantis/bridge.sock");
  EXPECT_THAT(made, ElementsAre("/first/Korvantis"));
}

TEST(BridgeSocketPath, LiesInTheTemporaryFolderWhenThereIsNoOther) {
  FileManagerCalls files;
  files.applicationSupportDirectories = [] { return std::vector<std::string>(); };
  files.temporaryDirectory = [] { return "/temporary/"; };
  files.createDirectory = [](const std::string&) { return true; };
  EXPECT_EQ(BridgeSocket::defaultSocketPath(files), "/temporary/Korvantis/bridge.sock");
}

TEST(BridgeSocketPath, IsTheSameWhenTheFolderCanNotBeMade) {
  FileManagerCalls files;
  files.applicationSupportDirectories = [] { return std::vector<std::string>{"/first"}; };
  files.createDirectory = [](const std::string&) { return false; };
  EXPECT_EQ(BridgeSocket::defaultSocketPath(files), "/first/Korvantis/bridge.sock");
}

TEST(BridgeSocketPath, TheFolderThatItMakesIsForThisUserAlone) {
  const test::TemporaryFolder folder;
  FileManagerCalls files = systemFileManagerCalls();
  files.applicationSupportDirectories = [&] {
    return std::vector<std::string>{folder.path("a/b")};
  };
  EXPECT_EQ(BridgeSocket::defaultSocketPath(files), folder.path("a/b/Korvantis/bridge.sock"));
  struct stat facts {};
  ASSERT_EQ(::stat(folder.path("a/b/Korvantis").c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 07777, 0700U);
}

}  // namespace
}  // namespace korvantis
