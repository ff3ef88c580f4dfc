#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinkCounters.h"

namespace korvantis {

/// Where the facts about the machine come from.
struct MachineSources {
  /// The folder above `/proc` and `/sys`, without a slash at its end; empty on the running
  /// system.
  std::string root;

  /// Seconds since any fixed point, never going back.
  std::function<double()> monotonicSeconds;

  /// All network interfaces as the kernel tells them; absent when it does not, and then the
  /// folder is read instead.
  std::function<std::optional<std::vector<LinkCounters>>()> dumpLinks;
};

/// The running system's own.
MachineSources systemMachineSources();

}  // namespace korvantis
