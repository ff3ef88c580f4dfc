#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <thread>

#include "analysis/ContainerSampler.h"
#include "support/TemporaryFolder.h"
#include "support/UnixServer.h"

namespace korvantis {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::receiveAll;
using test::receiveOnce;
using test::sendAll;
using test::TemporaryFolder;
using test::UnixServer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string header = "HTTP/1.0 200 OK\r\nContent-Type: application/json\r\n\r\n";
const std::string body =
    R"([{"Id":"0123456789abcdef","Names":["/web"],"Image":"nginx","Status":"Up 2 minutes",)"
    R"("Ports":[{"IP":"0.0.0.0","PublicPort":8080},{"IP":"::","PublicPort":8080}]}])"
    "\n";

/// The sampler over the real system, with a home of its own in which engines are faked.
class ContainerEngineTest : public testing::Test {
 protected:
  const TemporaryFolder home;
  const std::string orbStack = socketIn(".orbstack/run");
  const std::string dockerDesktop = socketIn(".docker/run");
  double now = 1000;
  ContainerSampler sampler{calls()};

  PlatformCalls calls() {
    PlatformCalls calls = systemPlatformCalls();
    calls.clock.now = [this] { return now; };
    calls.files.homeDirectoryForCurrentUser = [this] { return home.path(); };
    // An engine of this machine takes no part.
    calls.files.fileExistsAtPath = [this](const std::string& path) {
      return path.starts_with(home.path()) && std::filesystem::exists(path);
    };
    return calls;
  }

  std::string socketIn(const std::string& folder) const {
    return home.folderAt(folder) + "/docker.sock";
  }

  std::vector<ContainerSample> poll() {
    now += 5;
    return sampler.sampleContainers();
  }

  /// What the sampler makes of an engine that hears the whole request and then does this.
  std::vector<ContainerSample> pollOneThat(const std::function<void(int client)>& answers) {
    std::filesystem::remove(orbStack);
    const UnixServer engine(orbStack, [&](int client) {
      EXPECT_EQ(receiveOnce(client),
                "GET /containers/json HTTP/1.0\r\nHost: localhost\r\nConnection: close\r\n\r\n");
      answers(client);
    });
    return poll();
  }

  std::vector<ContainerSample> pollOneThatSays(const std::string& reply) {
    return pollOneThat([&](int client) { sendAll(client, reply); });
  }
};

TEST_F(ContainerEngineTest, AWholeReplyIsUnderstood) {
  const auto containers = pollOneThatSays(header + body);
  ASSERT_THAT(containers, SizeIs(1));
  EXPECT_EQ(containers[0].id, "0123456789ab");
  EXPECT_EQ(containers[0].name, "web");
  EXPECT_EQ(containers[0].engine, "OrbStack");
  EXPECT_EQ(containers[0].status, "Up 2 minutes");
  EXPECT_THAT(containers[0].ports, ElementsAre(8080));
}

TEST_F(ContainerEngineTest, AReplyInPiecesIsUnderstood) {
  const auto containers = pollOneThat([](int client) {
    for (const char byte : header + body) sendAll(client, {&byte, 1});
  });
  EXPECT_THAT(containers, SizeIs(1));
}

TEST_F(ContainerEngineTest, ASlowReplyIsUnderstoodAsLongAsEachPieceComesInTime) {
  const auto containers = pollOneThat([](int client) {
    const std::string reply = header + body;
    for (std::size_t at = 0; at < reply.size(); at += 40) {
      std::this_thread::sleep_for(milliseconds(50));
      sendAll(client, std::string_view(reply).substr(at, 40));
    }
  });
  EXPECT_THAT(containers, SizeIs(1));
}

TEST_F(ContainerEngineTest, AnEngineThatHangsCostsOneTimeLimit) {
  const auto begin = steady_clock::now();
  EXPECT_THAT(pollOneThat([](int client) { receiveAll(client); }), IsEmpty());
  EXPECT_GE(steady_clock::now() - begin, milliseconds(350));
}

TEST_F(ContainerEngineTest, AnEngineThatHangsAfterAWholeReplyIsHeard) {
  EXPECT_THAT(pollOneThat([](int client) {
                sendAll(client, header + body);
                receiveAll(client);
              }),
              SizeIs(1));
}

TEST_F(ContainerEngineTest, AnEngineThatHangsHalfWayIsUnreadable) {
  EXPECT_THAT(pollOneThat([](int client) {
                sendAll(client, header + body.substr(0, 20));
                receiveAll(client);
              }),
              IsEmpty());
}

TEST_F(ContainerEngineTest, AnEngineThatClosesAtOnceIsUnreadable) {
  const UnixServer engine(orbStack, [](int) {});
  EXPECT_THAT(poll(), IsEmpty());
}

TEST_F(ContainerEngineTest, AnOversizedReplyIsCutAndLeft) {
  const std::string padding(20'000'000, ' ');
  EXPECT_THAT(pollOneThatSays(header + "[{}" + padding + "]"), IsEmpty());
}

TEST_F(ContainerEngineTest, ChunkedNotUTF8NoHeaderEndAndNoListAreUnreadable) {
  EXPECT_THAT(pollOneThatSays("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n[]\r\n0"),
              IsEmpty());
  EXPECT_THAT(pollOneThatSays(header + "[{\"Id\":\"\xFF\"}]"), IsEmpty());
  EXPECT_THAT(pollOneThatSays("HTTP/1.0 200 OK\r\n" + body), IsEmpty());
  EXPECT_THAT(pollOneThatSays(header + "{\"message\":\"page not found\"}"), IsEmpty());
}

TEST_F(ContainerEngineTest, ASocketPathThatNobodyListensAtGivesWayToTheNext) {
  {
    const UnixServer gone(orbStack, [](int) {});
  }
  ASSERT_TRUE(std::filesystem::exists(orbStack));
  const UnixServer next(dockerDesktop, [](int client) {
    receiveOnce(client);
    sendAll(client, header + body);
  });
  const auto containers = poll();
  ASSERT_THAT(containers, SizeIs(1));
  EXPECT_EQ(containers[0].engine, "Docker Desktop");
}

TEST_F(ContainerEngineTest, AFileInTheSocketsPlaceIsNoEngine) {
  home.write(".orbstack/run/docker.sock", "no socket");
  EXPECT_THAT(poll(), IsEmpty());
}

TEST_F(ContainerEngineTest, TwoHundredPollsLeaveNoDescriptorOpen) {
  const auto openDescriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
  };
  const UnixServer engine(orbStack, [](int client) {
    receiveOnce(client);
    sendAll(client, header + body);
  });
  EXPECT_THAT(poll(), SizeIs(1));
  const auto before = openDescriptors();
  for (int round = 0; round < 200; ++round) EXPECT_THAT(poll(), SizeIs(1));
  // The server closes its end a moment later, in its own thread.
  EXPECT_LE(openDescriptors(), before + 1);
}

}  // namespace
}  // namespace korvantis
