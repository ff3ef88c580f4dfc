#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>

#include "platform/PlatformCalls.h"
#include "platform/SocketCalls.h"
#include "platform/UnixSocketClient.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::TemporaryFolder;

/// A listening socket and a client of it, both through the seam.
class SocketCallsTest : public testing::Test {
 protected:
  const TemporaryFolder folder;
  const std::string path = folder.path("socket");
  const SocketCalls calls = systemSocketCalls();
  const OwnedSocket server{calls, calls.socket(DARWIN_AF_UNIX, DARWIN_SOCK_STREAM, 0)};

  int bindAt(const std::string& place) const {
    const auto address = socketAddressOf(place);
    return address ? calls.bind(server.number(), &*address, sizeof *address) : -2;
  }

  int connectTo(const std::string& place) const {
    const OwnedSocket client(calls, calls.socket(DARWIN_AF_UNIX, DARWIN_SOCK_STREAM, 0));
    const auto address = socketAddressOf(place);
    return address ? calls.connect(client.number(), &*address, sizeof *address) : -2;
  }
};

TEST_F(SocketCallsTest, AMessageGoesThereAndBack) {
  ASSERT_EQ(bindAt(path), 0);
  ASSERT_EQ(calls.listen(server.number(), 8), 0);
  const auto client = connectToUnixSocket(calls, path, {.tv_sec = 5, .tv_usec = 0});
  ASSERT_TRUE(client);
  DarwinSocketAddress address{};
  std::uint32_t length = sizeof address;
  const OwnedSocket accepted(calls, calls.accept(server.number(), &address, &length));
  ASSERT_TRUE(accepted);
  EXPECT_EQ(address.sun_family, DARWIN_AF_UNIX);
  EXPECT_EQ(calls.write(client->number(), "ping", 4), 4);
  std::array<char, 16> buffer{};
  EXPECT_EQ(calls.read(accepted.number(), buffer.data(), buffer.size()), 4);
  EXPECT_EQ(std::string(buffer.data()), "ping");

  std::uint32_t user = 99;
  std::uint32_t group = 99;
  EXPECT_EQ(calls.getpeereid(accepted.number(), &user, &group), 0);
  EXPECT_EQ(user, ::geteuid());
  EXPECT_EQ(group, ::getegid());
}

TEST_F(SocketCallsTest, DescriptorsAreNotInheritedByProgramsThatAreStarted) {
  ASSERT_EQ(bindAt(path), 0);
  ASSERT_EQ(calls.listen(server.number(), 8), 0);
  const auto client = connectToUnixSocket(calls, path, {.tv_sec = 5, .tv_usec = 0});
  DarwinSocketAddress address{};
  std::uint32_t length = sizeof address;
  const OwnedSocket accepted(calls, calls.accept(server.number(), &address, &length));
  for (const int descriptor : {server.number(), client->number(), accepted.number()}) {
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC);
  }
}

TEST_F(SocketCallsTest, WritingWithoutAReaderFailsAndSendsNoSignal) {
  ASSERT_EQ(bindAt(path), 0);
  ASSERT_EQ(calls.listen(server.number(), 8), 0);
  const auto client = connectToUnixSocket(calls, path, {.tv_sec = 5, .tv_usec = 0});
  calls.close(calls.accept(server.number(), nullptr, nullptr));
  // The default for a broken pipe is the end of this program.
  EXPECT_EQ(calls.write(client->number(), "ping", 4), -1);
  EXPECT_EQ(errno, EPIPE);
}

TEST_F(SocketCallsTest, TimeLimitsAreSetInDarwinsTerms) {
  const DarwinTimeValue limit{.tv_sec = 2, .tv_usec = 250'000};
  EXPECT_EQ(calls.setsockopt(server.number(), DARWIN_SOL_SOCKET, DARWIN_SO_RCVTIMEO, &limit,
                             sizeof limit),
            0);
  timeval receive{};
  timeval send{};
  socklen_t length = sizeof receive;
  ::getsockopt(server.number(), SOL_SOCKET, SO_RCVTIMEO, &receive, &length);
  ::getsockopt(server.number(), SOL_SOCKET, SO_SNDTIMEO, &send, &length);
  EXPECT_EQ(receive.tv_sec, 2);
  EXPECT_NEAR(static_cast<double>(receive.tv_usec), 250'000, 10'000);
  EXPECT_EQ(send.tv_sec, 0) << "the other one stays";
  EXPECT_EQ(calls.setsockopt(server.number(), DARWIN_SOL_SOCKET, 4, &limit, sizeof limit), -1);
  EXPECT_EQ(calls.setsockopt(server.number(), 1, DARWIN_SO_RCVTIMEO, &limit, sizeof limit), -1);
  EXPECT_EQ(calls.setsockopt(server.number(), DARWIN_SOL_SOCKET, DARWIN_SO_RCVTIMEO, &limit, 4),
            -1);
}

TEST_F(SocketCallsTest, TheSocketFileIsForItsOwnerAloneFromItsFirstMoment) {
  const mode_t before = ::umask(0);
  const int result = bindAt(path);
  ::umask(before);
  ASSERT_EQ(result, 0);
  struct stat facts {};
  ASSERT_EQ(::lstat(path.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode, S_IFSOCK | 0600U);
  EXPECT_EQ(calls.chmod(path.c_str(), 0640), 0);
  ASSERT_EQ(::lstat(path.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode, S_IFSOCK | 0640U);
  EXPECT_EQ(calls.unlink(path.c_str()), 0);
  EXPECT_EQ(calls.unlink(path.c_str()), -1);
}

TEST_F(SocketCallsTest, AnEmptyPathIsNoAddressThatEverybodyCouldReach) {
  EXPECT_EQ(bindAt(""), -1);
  EXPECT_EQ(connectTo(""), -1);
  EXPECT_EQ(bindAt(std::string("\0hidden", 7)), -1);
}

TEST_F(SocketCallsTest, APathOf103BytesFitsAndOneOf104DoesNot) {
  const std::string longest = folder.path(std::string(103 - folder.path("").size(), 'p'));
  EXPECT_FALSE(socketAddressOf(longest + "p"));
  ASSERT_EQ(bindAt(longest), 0);
  EXPECT_TRUE(std::filesystem::is_socket(longest));
}

TEST_F(SocketCallsTest, AWrongLengthOrFamilyIsNoAddress) {
  auto address = *socketAddressOf(path);
  EXPECT_EQ(calls.bind(server.number(), &address, sizeof address - 1), -1);
  address.sun_family = 2;
  EXPECT_EQ(calls.bind(server.number(), &address, sizeof address), -1);
}

TEST_F(SocketCallsTest, NobodyListeningIsAFailureToConnect) {
  EXPECT_EQ(connectTo(path), -1);
  ASSERT_EQ(bindAt(path), 0);
  EXPECT_EQ(connectTo(path), -1) << "bound is not listening";
}

TEST_F(SocketCallsTest, ASignalInBetweenDoesNotEndAWait) {
  ASSERT_EQ(bindAt(path), 0);
  ASSERT_EQ(calls.listen(server.number(), 8), 0);
  const auto client = connectToUnixSocket(calls, path, {.tv_sec = 30, .tv_usec = 0});
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) {};
  ASSERT_EQ(::sigaction(SIGUSR1, &action, &before), 0);
  const pthread_t reader = ::pthread_self();
  std::thread other([&, reader] {
    const OwnedSocket accepted(calls, calls.accept(server.number(), nullptr, nullptr));
    for (int round = 0; round < 20; ++round) {
      ::pthread_kill(reader, SIGUSR1);
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    calls.write(accepted.number(), "late", 4);
  });
  std::array<char, 16> buffer{};
  EXPECT_EQ(calls.read(client->number(), buffer.data(), buffer.size()), 4);
  other.join();
  ::sigaction(SIGUSR1, &before, nullptr);
}

TEST(WorkQueueCalls, UtilityWorkRunsOnAnotherThreadThatYields) {
  const WorkQueueCalls calls = systemWorkQueueCalls();
  std::promise<std::pair<std::thread::id, int>> seen;
  calls.asyncUtility([&] {
    seen.set_value({std::this_thread::get_id(), ::getpriority(PRIO_PROCESS, 0)});
  });
  const auto [thread, niceness] = seen.get_future().get();
  EXPECT_NE(thread, std::this_thread::get_id());
  EXPECT_EQ(niceness, std::max(10, ::getpriority(PRIO_PROCESS, 0)));
}

TEST(WorkQueueCalls, AreThereForTheWholeProgram) {
  const PlatformCalls calls = systemPlatformCalls();
  EXPECT_TRUE(calls.workQueues.asyncUtility);
  EXPECT_TRUE(calls.sockets.getpeereid);
}

}  // namespace
}  // namespace korvantis
