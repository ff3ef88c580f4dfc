#pragma once

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/types.h>
#include <unistd.h>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// A real PipeWire server of this test's own that speaks the sound server's protocol, with a
/// session manager on a private message bus, two sinks and a source, in a private runtime folder.
class PipeWireServer {
 public:
  PipeWireServer() : session_(start()) {}
  PipeWireServer(const PipeWireServer&) = delete;
  PipeWireServer& operator=(const PipeWireServer&) = delete;
  ~PipeWireServer() { ::kill(-session_.pid(), SIGKILL); }

  /// Whether this machine has all that it takes.
  static bool isInstalled() {
    for (const char* program :
         {"dbus-run-session", "pactl", "pipewire", "pipewire-pulse", "wireplumber"}) {
      if (!std::filesystem::exists(std::string("/usr/bin/") + program)) return false;
    }
    return true;
  }

  /// Its address.
  std::string address() const { return "unix:" + folder_.path("pulse/native"); }

 private:
  ChildProcess start() {
    const std::string script =
        "exec >/dev/null 2>&1\n"
        "pipewire & until [ -S \"$XDG_RUNTIME_DIR/pipewire-0\" ]; do sleep 0.05; done\n"
        "wireplumber & pipewire-pulse &\n"
        "until pactl info; do sleep 0.1; done\n"
        "pactl load-module module-null-sink sink_name=first\n"
        "pactl load-module module-null-sink sink_name=second\n"
        "pactl load-module module-null-sink media.class=Audio/Source/Virtual sink_name=mic "
        "channel_map=mono\n"
        "wait\n";
    const std::string home = folder_.path();
    return ChildProcess::program(
        "/usr/bin/dbus-run-session", {"dbus-run-session", "--", "/bin/sh", "-c", script}, [home] {
          // A group of its own, so that all of it ends together.
          ::setpgid(0, 0);
          ::setenv("HOME", home.c_str(), 1);
          ::setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
          ::setenv("PULSE_SERVER", ("unix:" + home + "/pulse/native").c_str(), 1);
        });
  }

  TemporaryFolder folder_;
  ChildProcess session_;
};

}  // namespace korvantis::test
