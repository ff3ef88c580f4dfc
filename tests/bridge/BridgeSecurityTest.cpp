#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <string>
#include <sys/stat.h>

#include "bridge/BridgeSocket.h"
#include "bridge/LiveBridge.h"
#include "support/ChildProcess.h"
#include "support/UnixClient.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::fixedProvider;
using test::LiveBridge;
using test::TemporaryFolder;
using test::UnixClient;
using testing::HasSubstr;
using testing::StartsWith;

constexpr uid_t nobody = 65534;
constexpr const char* statusRequest = "{\"command\":\"status\"}\n";

bool becomeNobody() {
  return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
         ::setresuid(nobody, nobody, nobody) == 0;
}

unsigned modeOf(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 ? facts.st_mode : 0;
}

std::shared_ptr<BridgeListener> startedAt(const std::string& path) {
  auto listener = std::make_shared<BridgeListener>(systemPlatformCalls(), path, fixedProvider());
  listener->start();
  return listener;
}

/// What another user gets who asks at `path`: the bytes, or why there was no way in.
std::string answerToNobody(const std::string& path) {
  return ChildProcess::answerOf([&] {
    if (!becomeNobody()) return std::string("still privileged");
    const UnixClient client(path);
    if (!client.isConnected()) return "refused " + std::to_string(client.refusal());
    return "connected " + client.ask(statusRequest);
  });
}

/// Tests with two users, which only the superuser can have.
class BridgeSecurity : public testing::Test {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become another user";
  }

  static void openTo(const TemporaryFolder& folder) { ::chmod(folder.path().c_str(), 0755); }
};

TEST_F(BridgeSecurity, AnotherUserIsStoppedByTheModeOfTheFile) {
  const LiveBridge bridge(fixedProvider());
  openTo(bridge.folder);
  EXPECT_EQ(answerToNobody(bridge.socketPath()), "refused " + std::to_string(EACCES));
}

TEST_F(BridgeSecurity, AnotherUserWhoGetsThatFarIsTurnedAwayWithoutAByte) {
  const LiveBridge bridge(fixedProvider());
  openTo(bridge.folder);
  ::chmod(bridge.socketPath().c_str(), 0666);
  EXPECT_EQ(answerToNobody(bridge.socketPath()), "connected ");
  EXPECT_TRUE(
      BridgeSocket::sendRequest("status", nlohmann::ordered_json::object(), bridge.socketPath()))
      << "the owner is served afterwards";
}

TEST_F(BridgeSecurity, RootIsServed) {
  const TemporaryFolder folder;
  ASSERT_EQ(::chown(folder.path().c_str(), nobody, nobody), 0);
  const std::string path = folder.path("bridge.sock");
  const ChildProcess program = ChildProcess::prepared([&] {
    // Kept for good: the serving thread must find it when it begins.
    static std::shared_ptr<BridgeListener> kept;
    if (becomeNobody()) kept = startedAt(path);
  });
  EXPECT_THAT(UnixClient(path).ask(statusRequest), StartsWith("{\"cpuPercent\":12.5,"));
}

TEST_F(BridgeSecurity, TheSameUserIsServed) {
  const TemporaryFolder folder;
  ASSERT_EQ(::chown(folder.path().c_str(), nobody, nobody), 0);
  const std::string path = folder.path("bridge.sock");
  const ChildProcess program = ChildProcess::prepared([&] {
    // Kept for good: the serving thread must find it when it begins.
    static std::shared_ptr<BridgeListener> kept;
    if (becomeNobody()) kept = startedAt(path);
  });
  EXPECT_THAT(answerToNobody(path), StartsWith("connected {\"cpuPercent\":12.5,"));
}

TEST_F(BridgeSecurity, AForeignFileInASharedFolderIsLeftAloneAndMeansNoBridge) {
  const TemporaryFolder folder;
  const std::string path = folder.write("bridge.sock", "somebody else's");
  ::chmod(folder.path().c_str(), 01777);
  EXPECT_EQ(ChildProcess::answerOf([&] {
              if (!becomeNobody()) return std::string("still privileged");
              return std::string(startedAt(path)->isRunning() ? "running" : "not running");
            }),
            "not running");
  EXPECT_TRUE(S_ISREG(modeOf(path)));
  EXPECT_EQ(std::filesystem::file_size(path), 15U);
}

TEST(BridgeSocketFile, IsForItsOwnerAloneFromItsFirstMoment) {
  const TemporaryFolder folder;
  const std::string path = folder.path("bridge.sock");
  PlatformCalls calls = systemPlatformCalls();
  unsigned modeAfterBind = 0;
  calls.sockets.bind = [&, bind = calls.sockets.bind](auto... arguments) {
    const int result = bind(arguments...);
    modeAfterBind = modeOf(path);
    return result;
  };
  const mode_t maskBefore = ::umask(0);
  const auto listener = std::make_shared<BridgeListener>(calls, path, fixedProvider());
  listener->start();
  ::umask(maskBefore);
  ASSERT_TRUE(listener->isRunning());
  EXPECT_EQ(modeAfterBind, S_IFSOCK | 0600U);
  EXPECT_EQ(modeOf(path), S_IFSOCK | 0600U);
}

TEST(BridgeSocketFile, ReplacesAFileOfOurs) {
  const TemporaryFolder folder;
  const std::string path = folder.write("bridge.sock", "no socket");
  EXPECT_TRUE(startedAt(path)->isRunning());
  EXPECT_EQ(modeOf(path), S_IFSOCK | 0600U);
}

TEST(BridgeSocketFile, ReplacesALinkAndLeavesWhatItPointsTo) {
  const TemporaryFolder folder;
  const std::string target = folder.write("precious", "kept");
  ::chmod(target.c_str(), 0644);
  folder.link("bridge.sock", target);
  EXPECT_TRUE(startedAt(folder.path("bridge.sock"))->isRunning());
  EXPECT_EQ(modeOf(folder.path("bridge.sock")), S_IFSOCK | 0600U);
  EXPECT_EQ(modeOf(target), S_IFREG | 0644U);
  EXPECT_EQ(std::filesystem::file_size(target), 4U);
}

TEST(BridgeSocketFile, ReplacesALinkThatPointsNowhere) {
  const TemporaryFolder folder;
  folder.link("bridge.sock", folder.path("nothing"));
  EXPECT_TRUE(startedAt(folder.path("bridge.sock"))->isRunning());
  EXPECT_FALSE(std::filesystem::exists(folder.path("nothing")));
}

TEST(BridgeSocketFile, AFolderInItsPlaceMeansNoBridgeAndKeepsWhatItHolds) {
  const TemporaryFolder folder;
  const std::string kept = folder.write("bridge.sock/kept", "kept");
  EXPECT_FALSE(startedAt(folder.path("bridge.sock"))->isRunning());
  EXPECT_TRUE(std::filesystem::exists(kept));
}

TEST(BridgeSocketFile, AFolderThatIsNotThereMeansNoBridge) {
  const TemporaryFolder folder;
  const std::ptrdiff_t before = test::openDescriptors();
  EXPECT_FALSE(startedAt(folder.path("missing/bridge.sock"))->isRunning());
  EXPECT_EQ(test::openDescriptors(), before) << "the socket is closed again";
}

TEST(BridgeSocketFile, IsNotInheritedByProgramsThatAreStarted) {
  const LiveBridge bridge(fixedProvider());
  EXPECT_EQ(::fcntl(bridge.listener->serverFD(), F_GETFD), FD_CLOEXEC);
}

}  // namespace
}  // namespace korvantis
