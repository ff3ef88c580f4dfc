#pragma once

#include <functional>
#include <string>

namespace korvantis {

/// Where the facts about graphics, sensors, batteries, volumes and whatever sits on the system bus
/// come from.
struct HardwareSources {
  /// The folder above `/proc`, `/sys` and `/dev`, without a slash at its end; empty on the running
  /// system.
  std::string root;

  /// Seconds since any fixed point, never going back. Any thread.
  std::function<double()> monotonicSeconds;

  /// Whether slow questions are asked on threads of their own. Otherwise whoever asks first once
  /// they are due waits for them, so that recorded trees answer at once.
  bool inBackground = false;

  /// Whether the list of mounts, open as this descriptor, changed since it was opened or last
  /// asked about.
  std::function<bool(int mountList)> mountsChanged;

  /// The name under which the library of NVIDIA's driver is opened; empty: not at all.
  std::string nvidiaLibrary;

  /// The address of the system bus; empty: there is none.
  std::string systemBus;

  /// The address of the session's bus; empty: there is none.
  std::string sessionBus;
};

/// The running system's own.
HardwareSources systemHardwareSources();

}  // namespace korvantis
