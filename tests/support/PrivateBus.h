#pragma once

#include <chrono>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <thread>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A message bus of this test alone, on a socket in a folder of its own; ended with the object.
class PrivateBus {
 public:
  PrivateBus() {
    for (int attempt = 0; attempt < 500; ++attempt) {
      struct stat facts {};
      if (::stat(socketPath().c_str(), &facts) == 0) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error("the message bus did not start");
  }

  /// What clients connect to.
  std::string address() const { return "unix:path=" + socketPath(); }

 private:
  std::string socketPath() const { return folder.path() + "/bus"; }

  TemporaryFolder folder;
  ChildProcess daemon = ChildProcess::spawned(
      "/usr/bin/dbus-daemon", {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                               "--address=" + address()});
};

}  // namespace korvantis::test
