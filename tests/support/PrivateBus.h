#pragma once

#include <chrono>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A message bus of this test alone, on a socket in a folder of its own; ended with the object.
class PrivateBus {
 public:
  PrivateBus() {
    for (int attempt = 0; attempt < 1000 && !daemon.hasEnded(); ++attempt) {
      if (takesClients()) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error("the message bus did not start");
  }

  /// What clients connect to.
  std::string address() const { return "unix:path=" + socketPath(); }

 private:
  /// The socket is there a moment before anybody listens on it.
  bool takesClients() const {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    const std::string path = socketPath();
    path.copy(place.sun_path, sizeof place.sun_path - 1);
    const int client = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isTaken =
        ::connect(client, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0;
    ::close(client);
    return isTaken;
  }

  std::string socketPath() const { return folder.path() + "/bus"; }

  TemporaryFolder folder;
  ChildProcess daemon = ChildProcess::spawned(
      "/usr/bin/dbus-daemon", {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                               "--address=" + address()});
};

}  // namespace korvantis::test
