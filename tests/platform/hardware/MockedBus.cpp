#include "platform/hardware/MockedBus.h"

#include <stdexcept>
#include <unistd.h>

namespace korvantis::test {
namespace {

constexpr int mostTries = 2000;

void pause() {
  ::usleep(10'000);
}

std::string configuration(const std::string& socketPath) {
  return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\""
         " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
         "<busconfig><type>session</type><listen>unix:path=" +
         socketPath +
         "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
         "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n";
}

ChildProcess startDaemon(const TemporaryFolder& folder, const std::string& socketPath) {
  const std::string file = folder.write("bus.conf", configuration(socketPath));
  // It complains of limits that it may not raise.
  return ChildProcess::spawned(
      "/bin/sh", {"sh", "-c",
                  "exec dbus-daemon --nofork --nopidfile --nosyslog --config-file=\"$0\" "
                  "2>/dev/null",
                  file});
}

}  // namespace

MockedBus::MockedBus() : socketPath(folder.path("bus")), daemon(startDaemon(folder, socketPath)) {
  for (int tries = 0; !connect(); ++tries) {
    if (tries > mostTries || daemon.hasEnded()) throw std::runtime_error("no bus");
    pause();
  }
}

bool MockedBus::connect() {
  sd_bus* fresh = nullptr;
  if (::access(socketPath.c_str(), F_OK) != 0 || sd_bus_new(&fresh) < 0) return false;
  client.reset(fresh);
  return sd_bus_set_address(fresh, address().c_str()) >= 0 &&
         sd_bus_set_bus_client(fresh, 1) >= 0 && sd_bus_start(fresh) >= 0 &&
         sd_bus_call_method(fresh, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                            "org.freedesktop.DBus", "GetId", nullptr, nullptr, "") >= 0;
}

void MockedBus::startService(const std::string& mockTemplate, const std::string& busName) {
  start({"--template", mockTemplate}, busName);
}

void MockedBus::startPlainService(const std::string& busName, const std::string& path) {
  start({busName, path, busName}, busName);
}

void MockedBus::start(const std::vector<std::string>& words, const std::string& busName) {
  std::vector<std::string> command{"env",
                                   "DBUS_SYSTEM_BUS_ADDRESS=" + address(),
                                   "/usr/bin/python3",
                                   "-m",
                                   "dbusmock",
                                   "--system",
                                   "--logfile",
                                   "/dev/null"};
  command.insert(command.end(), words.begin(), words.end());
  services.push_back(ChildProcess::spawned("/usr/bin/env", command));
  for (int tries = 0; tries < mostTries && !services.back().hasEnded(); ++tries) {
    if (sd_bus_get_name_creds(client.get(), busName.c_str(), 0, nullptr) >= 0) return;
    pause();
  }
  throw std::runtime_error("no " + busName);
}

}  // namespace korvantis::test
