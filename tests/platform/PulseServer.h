#pragma once

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A real sound server of this test's own, with sinks and sources that make no sound, in a private
/// runtime folder.
class PulseServer {
 public:
  PulseServer() : daemon_(start()) {
    for (int tries = 0; tries < 500 && !isThere() && !daemon_.hasEnded(); ++tries)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }

  /// Whether it could be started.
  bool isThere() const { return std::filesystem::exists(folder_.path("native")); }

  /// Its address.
  std::string address() const { return "unix:" + folder_.path("native"); }

  /// Stops it in its tracks: it is there and answers nothing.
  void stop() const { ::kill(daemon_.pid(), SIGSTOP); }
  /// Lets it go on.
  void goOn() const { ::kill(daemon_.pid(), SIGCONT); }
  /// Ends it.
  void end() { daemon_.end(); }

 private:
  ChildProcess start() {
    const std::string native =
        "module-native-protocol-unix auth-anonymous=1 socket=" + folder_.path("native");
    const std::vector<std::string> words{
        "pulseaudio",
        "-n",
        "--daemonize=no",
        "--exit-idle-time=-1",
        "--disable-shm=yes",
        "--use-pid-file=no",
        "--log-target=null",
        "-L",
        "module-null-sink sink_name=first sink_properties=device.description=First",
        "-L",
        "module-null-sink sink_name=second channels=6 sink_properties=device.description=Second",
        "-L",
        "module-null-source source_name=mic description=Microphone",
        "-L",
        "module-null-source source_name=line description=Line",
        "-L",
        native};
    const std::string home = folder_.path();
    return ChildProcess::program("/usr/bin/pulseaudio", words, [home] {
      ::setenv("HOME", home.c_str(), 1);
      ::setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
      ::setenv("PULSE_RUNTIME_PATH", home.c_str(), 1);
      ::setenv("PULSE_STATE_PATH", home.c_str(), 1);
      ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    });
  }

  TemporaryFolder folder_;
  ChildProcess daemon_;
};

}  // namespace korvantis::test
