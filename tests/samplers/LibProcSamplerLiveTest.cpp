// The process sampler over the machine that the tests run on, against what the kernel's own files
// and the system's own tools say about the same processes.

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <optional>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "core/Utf8.h"
#include "samplers/LibProcSampler.h"
#include "samplers/LiveProcessFacts.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

namespace Facts = test::LiveProcessFacts;
using test::ChildProcess;
using test::TemporaryFolder;

/// A sampler of this machine whose clock a test can put forward.
class LibProcSamplerLive : public testing::Test {
 protected:
  LibProcSamplerLive() : sampler(platformWithOffset()) {}

  std::optional<ProcessSample> sample(pid_t pid) {
    const auto samples = sampler.sampleProcesses({});
    const auto found = std::find_if(samples.begin(), samples.end(),
                                    [pid](const ProcessSample& each) { return each.pid == pid; });
    return found == samples.end() ? std::nullopt : std::optional(*found);
  }

  double clockOffset = 0;
  const Clock realClock = systemClock();

 private:
  PlatformCalls platformWithOffset() {
    PlatformCalls platform = systemPlatformCalls();
    platform.clock.now = [this] { return realClock.now() + clockOffset; };
    return platform;
  }

 protected:
  LibProcSampler sampler;
};

/// A counter and the clock, each read just before and just after a sampling.
struct Bracket {
  double timeBefore = 0;
  std::int64_t countBefore = 0;
  double timeAfter = 0;
  std::int64_t countAfter = 0;
};

/// The least and the most that an honest rate between two samplings can be. `slack` is what the
/// counter may be off by.
struct RateBounds {
  RateBounds(const Bracket& first, const Bracket& second, double slack)
      : least((static_cast<double>(second.countBefore - first.countAfter) - slack) /
              (second.timeAfter - first.timeBefore)),
        most((static_cast<double>(second.countAfter - first.countBefore) + slack) /
             (second.timeBefore - first.timeAfter)) {}
  double least;
  double most;
};

ChildProcess busyChild() {
  return ChildProcess::program("/bin/sh", {"sh", "-c", "while :; do :; done"});
}

void waitForTicks(pid_t pid, std::int64_t ticks) {
  while (Facts::cpuTicks(pid) < ticks) std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

TEST_F(LibProcSamplerLive, ABusyLoopShowsTheShareOfACoreThatTheKernelGaveIt) {
  const ChildProcess busy = busyChild();
  std::optional<ProcessSample> seen;
  const auto bracketed = [&] {
    Bracket bracket{.timeBefore = realClock.now(), .countBefore = Facts::cpuTicks(busy.pid())};
    seen = sample(busy.pid());
    bracket.countAfter = Facts::cpuTicks(busy.pid());
    bracket.timeAfter = realClock.now();
    return bracket;
  };
  const Bracket first = bracketed();
  ASSERT_TRUE(seen);
  EXPECT_EQ(seen->cpuPercent, 0) << "seen for the first time";
  waitForTicks(busy.pid(), first.countAfter + 60);
  const Bracket second = bracketed();
  ASSERT_TRUE(seen);

  // The kernel cuts user and system time to whole ticks, each on its own.
  const RateBounds ticks(first, second, 3);
  ASSERT_GT(ticks.least, 0);
  const double percentPerTick = 100 / Facts::ticksPerSecond();
  EXPECT_GE(seen->cpuPercent, ticks.least * percentPerTick);
  EXPECT_LE(seen->cpuPercent, ticks.most * percentPerTick);
  EXPECT_DOUBLE_EQ(seen->energyWatts,
                   seen->cpuPercent * 0.085 + (seen->idleWakeups > 500 ? 0.15 : 0));
}

TEST_F(LibProcSamplerLive, ASleeperShowsZero) {
  const ChildProcess sleeper = ChildProcess::program("/bin/sleep", {"sleep", "1000000"});
  // Its start takes CPU time until it sleeps for good.
  while (Facts::state(sleeper.pid()) != 'S') {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  const std::int64_t ticks = Facts::cpuTicks(sleeper.pid());
  sample(sleeper.pid());
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  const auto asleep = sample(sleeper.pid());
  ASSERT_TRUE(asleep);
  EXPECT_EQ(asleep->cpuPercent, 0);
  EXPECT_EQ(asleep->energyWatts, 0);
  EXPECT_EQ(Facts::cpuTicks(sleeper.pid()), ticks);
}

TEST_F(LibProcSamplerLive, FactsOfAChildAreWhatItsFilesSay) {
  const TemporaryFolder folder;
  const ChildProcess child = ChildProcess::program("/bin/sleep", {"sleep", "1000000"}, [&] {
    if (::chdir(folder.path().c_str()) != 0) ::_exit(1);
  });
  const auto record = sample(child.pid());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->ppid, ::getpid());
  EXPECT_EQ(record->uid, ::getuid());
  EXPECT_EQ(record->name, "sleep");
  EXPECT_EQ(record->arguments, "sleep 1000000");
  EXPECT_EQ(record->executablePath, Facts::link(child.pid(), "exe"));
  EXPECT_EQ(record->workingDirectory, folder.path());
  EXPECT_TRUE(record->listeningPorts.empty());
}

TEST_F(LibProcSamplerLive, FactsOfAChildAreWhatTheProcessListToolSays) {
  if (Facts::outputOf("command -v ps").empty()) GTEST_SKIP() << "no such tool here";
  const ChildProcess child = ChildProcess::program("/bin/sleep", {"sleep", "1000001"});
  const auto record = sample(child.pid());
  ASSERT_TRUE(record);
  const auto column = [&](const std::string& name) {
    const std::string text =
        Facts::outputOf("ps -ww -p " + std::to_string(child.pid()) + " -o " + name + "=");
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
  };
  EXPECT_EQ(std::to_string(record->ppid), column("ppid"));
  EXPECT_EQ(std::to_string(record->uid), column("uid"));
  EXPECT_EQ(record->name, column("comm"));
  EXPECT_EQ(record->arguments, column("args"));
  const double age = realClock.now() - record->startedAt.secondsSince1970;
  EXPECT_NEAR(age, std::stod(column("etimes")), 2.5) << "both are whole seconds";
}

TEST_F(LibProcSamplerLive, MemoryIsThePrivateMemoryOfTheProcess) {
  const ChildProcess child =
      ChildProcess::prepared([] { static std::vector<char> held(32U << 20U, 'x'); });
  const auto record = sample(child.pid());
  ASSERT_TRUE(record);
  EXPECT_GE(record->memoryBytes, 32U << 20U);
  const auto expected = static_cast<double>(Facts::privateBytes(child.pid()));
  EXPECT_NEAR(static_cast<double>(record->memoryBytes), expected, 1 << 20);
}

TEST_F(LibProcSamplerLive, DiskWritesShowTheRateThatTheKernelCounted) {
  if (Facts::ownWrittenBytes() < 0) GTEST_SKIP() << "this kernel does not count disk bytes";
  const TemporaryFolder folder;
  std::optional<ProcessSample> seen;
  const auto bracketed = [&] {
    Bracket bracket{.timeBefore = realClock.now(), .countBefore = Facts::ownWrittenBytes()};
    seen = sample(::getpid());
    bracket.countAfter = Facts::ownWrittenBytes();
    bracket.timeAfter = realClock.now();
    return bracket;
  };
  const Bracket first = bracketed();
  folder.write("big", std::string(16U << 20U, 'x'));
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  const Bracket second = bracketed();
  ASSERT_TRUE(seen);
  const RateBounds bytes(first, second, 0);
  EXPECT_GE(seen->diskWriteBytesPerSec, bytes.least);
  EXPECT_LE(seen->diskWriteBytesPerSec, bytes.most);
}

/// A TCP socket of this process that listens on a free loopback port.
struct Listener {
  Listener() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // The socket interface takes every address family through one type.
    auto* any = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof(address);
    const bool listens = ::bind(descriptor, any, size) == 0 && ::listen(descriptor, 1) == 0 &&
                         ::getsockname(descriptor, any, &size) == 0;
    if (listens) port = ntohs(address.sin_port);
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener() { close(); }
  void close() {
    if (descriptor >= 0) ::close(descriptor);
    descriptor = -1;
  }

  int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::uint16_t port = 0;
};

bool shows(const std::optional<ProcessSample>& sample, std::uint16_t port) {
  return sample && std::count(sample->listeningPorts.begin(), sample->listeningPorts.end(), port);
}

TEST_F(LibProcSamplerLive, AListenersPortShowsAndGoesWithTheNextScan) {
  Listener listener;
  ASSERT_NE(listener.port, 0);
  EXPECT_TRUE(shows(sample(::getpid()), listener.port));
  listener.close();
  clockOffset += 3.5;
  const auto later = sample(::getpid());
  ASSERT_TRUE(later);
  EXPECT_FALSE(shows(later, listener.port));
}

TEST_F(LibProcSamplerLive, ASocketThatIsBoundButDoesNotListenAddsNoPort) {
  const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* any = reinterpret_cast<sockaddr*>(&address);
  socklen_t size = sizeof(address);
  ASSERT_EQ(::bind(descriptor, any, size), 0);
  ASSERT_EQ(::getsockname(descriptor, any, &size), 0);
  const auto own = sample(::getpid());
  ::close(descriptor);
  ASSERT_TRUE(own);
  EXPECT_FALSE(shows(own, ntohs(address.sin_port)));
}

TEST_F(LibProcSamplerLive, HostileNamesBecomeWellFormedText) {
  const TemporaryFolder folder;
  const std::string home = folder.folderAt("bad \xFF\n\"folder\")");
  const std::vector<std::string> words = {"a) R 1\n", "\xFF\xFE", "caf\xC3\xA9", ""};
  const ChildProcess named = ChildProcess::prepared([&] {
    ::prctl(PR_SET_NAME, "x) Z 1 \xFF\n\xC3");
    if (::chdir(home.c_str()) != 0) ::_exit(1);
  });
  const ChildProcess spoken = ChildProcess::program(
      "/bin/sh", {words[0], "-c", "read line", words[1], words[2], words[3]}, [] {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0) ::_exit(1);
        ::dup2(ends[0], 0);
      });
  const auto first = sample(named.pid());
  ASSERT_TRUE(first);
  EXPECT_EQ(first->name, "x) Z 1 \xEF\xBF\xBD\n\xEF\xBF\xBD");
  EXPECT_EQ(first->ppid, ::getpid());
  EXPECT_EQ(first->workingDirectory, folder.path() + "/bad \xEF\xBF\xBD\n\"folder\")");

  const auto second = sample(spoken.pid());
  ASSERT_TRUE(second);
  EXPECT_EQ(second->arguments, "a) R 1\n -c read line caf\xC3\xA9");
}

TEST_F(LibProcSamplerLive, AProcessOfAnotherUserKeepsItsFolderAndArgumentsToItself) {
  if (::getuid() != 0) GTEST_SKIP() << "only root can become another user";
  const ChildProcess other = ChildProcess::program("/bin/sleep", {"sleep", "1000002"}, [] {
    if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(1);
  });
  const auto record = sample(other.pid());
  ASSERT_TRUE(record);
  EXPECT_EQ(record->uid, 65534U);
  EXPECT_EQ(record->arguments, "sleep");
  EXPECT_EQ(record->workingDirectory, std::nullopt);
  EXPECT_TRUE(record->listeningPorts.empty());
}

TEST_F(LibProcSamplerLive, AProcessThatHasEndedIsNoLongerListed) {
  ChildProcess child = ChildProcess::prepared();
  EXPECT_TRUE(sample(child.pid()));
  const pid_t pid = child.pid();
  child.end();
  EXPECT_FALSE(sample(pid));
}

TEST_F(LibProcSamplerLive, AReusedNumberNeverShowsFactsOrFiguresOfTheProcessBefore) {
  std::optional<ChildProcess> first =
      ChildProcess::program("/bin/sh", {"sh", "-c", "while :; do :; done", "forerunner"});
  const pid_t number = first->pid();
  ASSERT_TRUE(sample(number));
  waitForTicks(number, 20);
  ASSERT_THAT(sample(number)->arguments, testing::HasSubstr("forerunner"));
  // Only from the next clock tick on does another process differ in its start.
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  first->end();
  std::optional<ChildProcess> heir;
  for (int attempt = 0; attempt < 100 && !heir; ++attempt) {
    heir = ChildProcess::withNumber(number);
  }
  if (!heir) GTEST_SKIP() << "numbers of processes can't be chosen here";

  // The number is missing for one tick, which ends all that was kept under it.
  EXPECT_FALSE(sample(number));
  const auto seen = sample(number);
  ASSERT_TRUE(seen);
  EXPECT_THAT(seen->arguments, testing::Not(testing::HasSubstr("forerunner")));
  EXPECT_EQ(seen->executablePath, Facts::link(number, "exe"));
  EXPECT_EQ(seen->cpuPercent, 0) << "seen for the first time";
}

TEST_F(LibProcSamplerLive, EveryRecordIsWellFormed) {
  const auto samples = sampler.sampleProcesses({});
  EXPECT_FALSE(samples.empty());
  for (const ProcessSample& each : samples) {
    EXPECT_GT(each.pid, 0);
    EXPECT_GT(each.responsiblePID, 0);
    EXPECT_FALSE(each.name.empty()) << each.pid;
    EXPECT_FALSE(each.arguments.empty()) << each.pid;
    EXPECT_TRUE(isValidUtf8(each.name) && isValidUtf8(each.arguments) &&
                isValidUtf8(each.executablePath))
        << each.pid;
    EXPECT_GT(each.startedAt.secondsSince1970, 0) << each.pid;
    EXPECT_LE(each.startedAt.secondsSince1970, realClock.now() + 1) << each.pid;
  }
}

TEST_F(LibProcSamplerLive, ConcurrentSamplingsOfTheRealMachineAreSafe) {
  const ChildProcess child = ChildProcess::program("/bin/sleep", {"sleep", "1000003"});
  std::atomic<int> missing = 0;
  const auto sampleOften = [&] {
    for (int round = 0; round < 5; ++round) {
      const auto record = sample(child.pid());
      if (!record || record->arguments != "sleep 1000003") ++missing;
    }
  };
  std::thread other(sampleOften);
  sampleOften();
  other.join();
  EXPECT_EQ(missing, 0);
}

}  // namespace
}  // namespace korvantis
