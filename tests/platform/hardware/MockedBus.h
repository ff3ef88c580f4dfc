#pragma once

#include <memory>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A message bus of this test's own, and stand-ins for services on it. All of it ends with the
/// object.
class MockedBus {
 public:
  /// Starts the bus and waits until it takes connections.
  MockedBus();

  /// Its address.
  std::string address() const { return "unix:path=" + socketPath; }

  /// Starts the stand-in of this name and waits until it is there under its bus name.
  void startService(const std::string& mockTemplate, const std::string& busName);

  /// Starts an empty stand-in with one object whose interface is called like its bus name.
  void startPlainService(const std::string& busName, const std::string& path);

  /// A connection for the test itself.
  sd_bus* connection() const { return client.get(); }

  /// Kills the bus: connections break.
  void end() { daemon.end(); }

 private:
  struct Close {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
  };

  bool connect();
  void start(const std::vector<std::string>& words, const std::string& busName);

  TemporaryFolder folder;
  std::string socketPath;
  ChildProcess daemon;
  std::unique_ptr<sd_bus, Close> client;
  std::vector<ChildProcess> services;
};

}  // namespace korvantis::test
