#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#include "support/ChildProcess.h"
#include "support/ListeningPort.h"
#include "support/ProcessQuestions.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ListeningPort;
using test::ProcessQuestions;
using testing::Contains;
using testing::Not;

/// Sources that ask the running kernel, or that must do with its files.
ProcessSources liveSources(bool isAsked) {
  ProcessSources sources = systemProcessSources();
  if (!isAsked) sources.listeningSockets = nullptr;
  return sources;
}

class LivePorts : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(, LivePorts, testing::Values(true, false), [](const auto& kind) {
  return kind.param ? "AskedOfTheKernel" : "ReadFromFiles";
});

TEST_P(LivePorts, ListeningSocketsOfBothVersionsAreShown) {
  const ListeningPort version4;
  const ListeningPort version6(true);
  ProcessQuestions questions(liveSources(GetParam()));
  questions.pids();
  const auto ports = questions.ports(::getpid());
  EXPECT_THAT(ports, Contains(version4.port()));
  EXPECT_THAT(ports, Contains(version6.port()));
  const auto record = questions.socket(::getpid(), version6.descriptor());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->psi.soi_proto.pri_tcp.tcpsi_ini.insi_vflag, 2);
}

TEST_P(LivePorts, ASocketThatIsTcpButNotListeningAddsNone) {
  const ListeningPort waiting;
  const ListeningPort bound(false, false);
  const ListeningPort connected(false, false);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(waiting.port());
  ASSERT_EQ(::connect(connected.descriptor(), reinterpret_cast<const sockaddr*>(&address),
                      sizeof address),
            0);
  ProcessQuestions questions(liveSources(GetParam()));
  questions.pids();
  const auto ports = questions.ports(::getpid());
  EXPECT_THAT(ports, Contains(waiting.port()));
  EXPECT_THAT(ports, Not(Contains(bound.port())));
  EXPECT_THAT(ports, Not(Contains(connected.port())));
  EXPECT_TRUE(questions.socket(::getpid(), connected.descriptor()))
      << "it is a socket all the same";
}

TEST_P(LivePorts, APortIsShownForEveryProcessThatHoldsItsSocket) {
  const ListeningPort port;
  const auto child = ChildProcess::prepared();
  ProcessQuestions questions(liveSources(GetParam()));
  questions.pids();
  EXPECT_THAT(questions.ports(child.pid()), Contains(port.port()));
}

TEST_P(LivePorts, APortClosedBetweenListAndLookIsNotShown) {
  ListeningPort port;
  const int descriptor = port.descriptor();
  ProcessQuestions questions(liveSources(GetParam()));
  questions.pids();
  ASSERT_FALSE(questions.descriptors(::getpid()).empty());
  port.close();
  EXPECT_EQ(questions.port(::getpid(), descriptor), 0);
  const int reused = ::dup2(0, descriptor);
  EXPECT_EQ(questions.port(::getpid(), descriptor), 0);
  ::close(reused);
}

TEST_P(LivePorts, Of2000DescriptorsTheFirst128AreLookedAt) {
  const ListeningPort early;
  const ListeningPort late;
  const auto child = ChildProcess::prepared([&] {
    const rlimit limit{4096, 4096};
    ::setrlimit(RLIMIT_NOFILE, &limit);
    ::dup2(late.descriptor(), 1500);
    ::close(late.descriptor());
    for (int descriptor = 0; descriptor < 2000; ++descriptor) {
      if (::fcntl(descriptor, F_GETFD) < 0) ::dup2(0, descriptor);
    }
  });
  ProcessQuestions questions(liveSources(GetParam()));
  questions.pids();
  const auto listed = questions.descriptors(child.pid());
  ASSERT_EQ(listed.size(), 128U);
  EXPECT_EQ(listed.front().proc_fd, 0);
  // One number lower down was closed when the child was ready.
  EXPECT_EQ(listed.back().proc_fd, 128);
  const auto ports = questions.ports(child.pid());
  EXPECT_THAT(ports, Contains(early.port()));
  EXPECT_THAT(ports, Not(Contains(late.port())));
}

}  // namespace
}  // namespace korvantis
