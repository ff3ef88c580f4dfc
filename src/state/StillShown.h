#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "core/AppGroup.h"
#include "core/EngineSnapshot.h"
#include "core/IdleServer.h"

namespace korvantis {

/// Tells the processes of a screen from others that got their numbers meanwhile: between the
/// drawing of a row and the press of its button any time may have passed. Main thread.
class StillShown {
 public:
  /// When the process with a number began, in whole seconds since 1970; absent when there is none.
  using ProcessStart = std::function<std::optional<double>(std::int32_t pid)>;

  /// Without `processStart` every process passes for the one that was shown.
  explicit StillShown(ProcessStart processStart) : start(std::move(processStart)) {}

  /// `group` with those of its processes that are still the ones in it.
  AppGroup of(AppGroup group) const;

  /// Those of `servers` that still are what they were.
  std::vector<IdleServer> of(std::vector<IdleServer> servers) const;

  /// Whether the process `pid` is still the one in `snapshot`, or was in none of its groups.
  bool isStillIn(const EngineSnapshot& snapshot, std::int32_t pid) const;

 private:
  bool isStill(std::int32_t pid, Instant startedAt) const;

  ProcessStart start;
};

}  // namespace korvantis
