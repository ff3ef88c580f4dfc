#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One power assertion that keeps the machine or its display awake.
struct SleepBlocker {
  std::int32_t pid = 0;
  std::string processName;
  std::string assertionType;
  std::string reason;
  bool preventsDisplaySleep = false;

  bool operator==(const SleepBlocker&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return std::to_string(pid) + "-" + assertionType; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"pid", &SleepBlocker::pid},
                      Field{"processName", &SleepBlocker::processName},
                      Field{"assertionType", &SleepBlocker::assertionType},
                      Field{"reason", &SleepBlocker::reason},
                      Field{"preventsDisplaySleep", &SleepBlocker::preventsDisplaySleep}};
  }
};

}  // namespace korvantis
