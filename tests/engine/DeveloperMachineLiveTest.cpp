// A developer's machine for real: a repository with a web server in it, a package inside the
// repository, and a program that bears a coding agent's name; seen through the engine's own tick.

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <netinet/in.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "engine/OstrelEngine.h"
#include "support/ChildProcess.h"
#include "support/ListeningPort.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::ListeningPort;
using test::TemporaryFolder;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

void enter(const std::string& folder) {
  if (::chdir(folder.c_str()) != 0) ::_exit(1);
}

/// Answers every request with the same page, for ever.
void serve(int listener) {
  for (;;) {
    const int client = ::accept(listener, nullptr, nullptr);
    if (client < 0) continue;
    std::array<char, 1024> request{};
    constexpr std::string_view page = "HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\nhello";
    if (::read(client, request.data(), request.size()) > 0) {
      [[maybe_unused]] const auto sent = ::write(client, page.data(), page.size());
    }
    ::close(client);
  }
}

/// A free port below the ephemeral range, as servers have.
std::unique_ptr<ListeningPort> servicePort() {
  std::vector<std::unique_ptr<ListeningPort>> tried;
  do {
    tried.push_back(std::make_unique<ListeningPort>());
  } while (tried.back()->port() >= 49152 && tried.size() < 500);
  return std::move(tried.back());
}

/// A web server of its own process that works in `folder`.
class WebServer {
 public:
  explicit WebServer(const std::string& folder)
      : socket(servicePort()),
        process(ChildProcess::prepared([&] {
          enter(folder);
          ::prctl(PR_SET_NAME, "webserver");
          std::thread(serve, socket->descriptor()).detach();
        })),
        number(socket->port()) {
    // From here on the socket is the server's alone.
    socket->close();
  }

  std::uint16_t port() const { return number; }
  pid_t pid() const { return process.pid(); }

 private:
  std::unique_ptr<ListeningPort> socket;
  ChildProcess process;
  std::uint16_t number;
};

/// What a server on this machine answers to a request for its first page.
std::string pageOn(std::uint16_t port) {
  const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(port);
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::string text;
  constexpr std::string_view request = "GET / HTTP/1.0\r\n\r\n";
  if (::connect(client, reinterpret_cast<sockaddr*>(&place), sizeof place) == 0 &&
      ::write(client, request.data(), request.size()) > 0) {
    std::array<char, 1024> chunk{};
    for (ssize_t got = 1; got > 0;) {
      got = ::read(client, chunk.data(), chunk.size());
      if (got > 0) text.append(chunk.data(), static_cast<std::size_t>(got));
    }
  }
  ::close(client);
  return text;
}

/// A shell under an agent's name that started two tools; all three end with the object.
class FakeAgent {
 public:
  FakeAgent(const TemporaryFolder& files, const std::string& folder)
      : process(ChildProcess::program(
            copied(files), {"claude", "-c", "/bin/sleep 1000 & /bin/sleep 1000 & echo; wait"}, [&] {
              enter(folder);
              ::setpgid(0, 0);
              ::dup2(output(), STDOUT_FILENO);
            })) {
    // The shell's line says that both have been started.
    std::array<char, 1> line{};
    [[maybe_unused]] const auto got = ::read(ends[0], line.data(), line.size());
  }
  FakeAgent(const FakeAgent&) = delete;
  FakeAgent& operator=(const FakeAgent&) = delete;
  ~FakeAgent() {
    ::kill(-process.pid(), SIGKILL);
    ::close(ends[0]);
    ::close(ends[1]);
  }

  pid_t pid() const { return process.pid(); }

 private:
  static std::string copied(const TemporaryFolder& files) {
    const std::string path = files.folderAt("bin") + "/claude";
    std::filesystem::copy_file("/bin/sh", path);
    return path;
  }

  int output() { return ends[1]; }

  std::array<int, 2> ends = [] {
    std::array<int, 2> made{};
    if (::pipe2(made.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return made;
  }();
  ChildProcess process;
};

const DevProject* projectAt(const EngineSnapshot& snapshot, const std::string& path) {
  const auto found = std::find_if(snapshot.projects.begin(), snapshot.projects.end(),
                                  [&](const DevProject& project) { return project.path == path; });
  return found == snapshot.projects.end() ? nullptr : &*found;
}

std::vector<std::int32_t> pidsOf(const DevProject& project) {
  std::vector<std::int32_t> pids;
  for (const ProcessSample& process : project.processes) pids.push_back(process.pid);
  std::sort(pids.begin(), pids.end());
  return pids;
}

class DeveloperMachineLive : public testing::Test {
 protected:
  DeveloperMachineLive() {
    files.write("shop/.git/HEAD", "ref: refs/heads/main\n");
    files.write("shop/packages/api/package.json", "{}");
    files.folderAt("shop/src/app");
    files.folderAt("shop/packages/api/lib");
  }

  TemporaryFolder files;
};

TEST_F(DeveloperMachineLive, TickShowsProjectsPortsAndAgentAsTheyAre) {
  const WebServer server(files.path("shop/src/app"));
  const auto worker = ChildProcess::prepared([&] { enter(files.path("shop/packages/api/lib")); });
  const FakeAgent agent(files, files.path("shop"));
  ASSERT_THAT(pageOn(server.port()), ::testing::HasSubstr("hello"));

  OstrelEngine engine(systemPlatformCalls());
  const EngineSnapshot snapshot = engine.sampleTick({}, {});

  const DevProject* const shop = projectAt(snapshot, files.path("shop"));
  ASSERT_NE(shop, nullptr);
  EXPECT_EQ(shop->name, "shop");
  EXPECT_THAT(shop->ports, ElementsAre(server.port()));
  EXPECT_THAT(pidsOf(*shop), Contains(server.pid()));
  EXPECT_THAT(pidsOf(*shop), Contains(agent.pid()));
  EXPECT_THAT(pidsOf(*shop), Not(Contains(worker.pid())));
  EXPECT_EQ(shop->processes.size(), 4U) << "server, agent and the agent's two tools";
  EXPECT_GT(shop->memoryBytes, 0U);

  const DevProject* const api = projectAt(snapshot, files.path("shop/packages/api"));
  ASSERT_NE(api, nullptr);
  EXPECT_EQ(api->name, "api");
  EXPECT_THAT(pidsOf(*api), ElementsAre(worker.pid()));

  const auto session =
      std::find_if(snapshot.agentSessions.begin(), snapshot.agentSessions.end(),
                   [&](const AgentSession& candidate) { return candidate.pid == agent.pid(); });
  ASSERT_NE(session, snapshot.agentSessions.end());
  EXPECT_EQ(session->toolName, "Claude Code");
  EXPECT_EQ(session->state, AgentState::working);
  EXPECT_EQ(session->projectPath, files.path("shop"));
  EXPECT_THAT(session->childProcesses, ElementsAre("sleep", "sleep"));
  EXPECT_EQ(snapshot.planLimits.size(), 2U);
}

TEST_F(DeveloperMachineLive, ServerIsForgottenAfterHalfAnHourAndNotBefore) {
  const WebServer server(files.path("shop"));
  PlatformCalls platform = systemPlatformCalls();
  double later = 0;
  platform.clock.now = [&later, real = platform.clock.now] { return real() + later; };
  OstrelEngine engine(platform);
  const auto rowOf = [&](const EngineSnapshot& snapshot) {
    const auto row =
        std::find_if(snapshot.listeningPorts.begin(), snapshot.listeningPorts.end(),
                     [&](const ListeningPortItem& item) { return item.pid == server.pid(); });
    return row == snapshot.listeningPorts.end() ? std::nullopt : std::optional(*row);
  };

  const auto early = rowOf(engine.sampleTick({}, {}));
  ASSERT_TRUE(early);
  EXPECT_FALSE(early->isIdle);

  later = 1900;
  const EngineSnapshot snapshot = engine.sampleTick({}, {});
  const auto late = rowOf(snapshot);
  ASSERT_TRUE(late);
  EXPECT_TRUE(late->isIdle);
  EXPECT_EQ(late->port, server.port());
  EXPECT_EQ(late->processName, "webserver");
  // The tests' own terminal, where a desktop entry makes an application of it.
  const auto holder = std::find_if(
      snapshot.appGroups.begin(), snapshot.appGroups.end(), [&](const AppGroup& group) {
        return std::any_of(
            group.processes.begin(), group.processes.end(),
            [&](const ProcessSample& process) { return process.pid == server.pid(); });
      });
  ASSERT_NE(holder, snapshot.appGroups.end());
  EXPECT_EQ(late->appName, holder->name);
  EXPECT_EQ(late->projectName, "shop");
  EXPECT_EQ(late->projectPath, files.path("shop"));
  const auto idle =
      std::find_if(snapshot.idleServers.begin(), snapshot.idleServers.end(),
                   [&](const IdleServer& candidate) { return candidate.pid == server.pid(); });
  ASSERT_NE(idle, snapshot.idleServers.end());
  EXPECT_THAT(idle->ports, ElementsAre(server.port()));
  EXPECT_GE(idle->idleSeconds, 1800);
  EXPECT_LT(idle->idleSeconds, 2200);
}

}  // namespace
}  // namespace korvantis
