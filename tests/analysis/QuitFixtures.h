#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/AppGroup.h"
#include "core/ProcessSample.h"
#include "core/SleepBlocker.h"

namespace korvantis {

inline constexpr const char* desktopReason = "Required by macOS desktop & system services.";
inline constexpr const char* idleReason =
    "Idle in the background with no disk writes or open server ports. Frees 512 MB.";

/// A process of the user's that does nothing and holds 64 MB.
inline ProcessSample idleProcess(std::int32_t pid, std::vector<std::uint16_t> ports = {}) {
  ProcessSample process;
  process.pid = pid;
  process.name = "worker";
  process.executablePath = "/Applications/Editor.app/Contents/MacOS/worker";
  process.memoryBytes = std::uint64_t{64} << 20;
  process.listeningPorts = std::move(ports);
  return process;
}

/// An application of one idle process, pid 700, that holds 512 MB.
inline AppGroup idleApp(const std::string& name = "Editor") {
  AppGroup app;
  app.id = "/Applications/" + name + ".app";
  app.name = name;
  app.bundlePath = app.id;
  app.memoryBytes = std::uint64_t{512} << 20;
  app.processes = {idleProcess(700)};
  return app;
}

inline SleepBlocker blockerOf(std::int32_t pid) {
  SleepBlocker blocker;
  blocker.pid = pid;
  return blocker;
}

}  // namespace korvantis
