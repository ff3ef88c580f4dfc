#include <chrono>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/linux/applications/SessionBus.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using test::ChildProcess;

/// What `body` says in a process whose session bus has this address.
std::string withBus(const std::string& address, const std::function<std::string()>& body) {
  return ChildProcess::answerOf([&] {
    ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    return body();
  });
}

/// A socket that lets everybody connect and says nothing.
class SilentBus {
 public:
  SilentBus() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = socketPath();
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(number, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(number, 8), 0);
  }
  ~SilentBus() { ::close(number); }
  SilentBus(const SilentBus&) = delete;
  SilentBus& operator=(const SilentBus&) = delete;

  std::string address() const { return "unix:path=" + socketPath(); }

 private:
  std::string socketPath() const { return folder.path() + "/bus"; }

  test::TemporaryFolder folder;
  int number = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST(SessionBus, ABusThatAcceptsAndStaysSilentHoldsNobodyUp) {
  const SilentBus bus;
  const std::string answer = withBus(bus.address(), [] {
    const auto begin = std::chrono::steady_clock::now();
    const bool isTaken = quitOverSessionBus("org.example.Editor", ::getpid());
    const auto owners = sessionBusNameOwners([](const std::string&) { return true; });
    // Far above our own limit, far below the library's.
    const bool isQuick = std::chrono::steady_clock::now() - begin < std::chrono::seconds(15);
    return std::string(isTaken ? "taken " : "refused ") + std::to_string(owners.size()) +
           (isQuick ? " quick" : " slow");
  });
  EXPECT_EQ(answer, "refused 0 quick");
}

TEST(SessionBus, WithoutABusNothingIsTakenAndNobodyIsThere) {
  EXPECT_EQ(withBus("unix:path=/nowhere/bus",
                    [] {
                      const auto all = [](const std::string&) { return true; };
                      return std::to_string(sessionBusNameOwners(all).size()) +
                             (quitOverSessionBus("org.example.Editor", 1) ? " taken" : " refused");
                    }),
            "0 refused");
}

TEST(SessionBus, ARealBusTellsWhoHoldsItsNames) {
  const test::PrivateBus bus;
  EXPECT_EQ(withBus(bus.address(),
                    [] {
                      std::string names;
                      for (const auto& holder :
                           sessionBusNameOwners([](const std::string&) { return true; })) {
                        names += holder.name + " ";
                      }
                      return names;
                    }),
            "org.freedesktop.DBus ");
}

TEST(SessionBus, ANameThatSomebodyElseHoldsIsNotAskedToQuit) {
  const test::PrivateBus bus;
  EXPECT_EQ(withBus(bus.address(),
                    [] {
                      return quitOverSessionBus("org.freedesktop.DBus", ::getpid()) ? "taken"
                                                                                    : "refused";
                    }),
            "refused");
}

}  // namespace
}  // namespace korvantis
