#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/Field.h"
#include "core/QuitSafetyVerdictKind.h"

namespace korvantis {

/// Whether something may be stopped, why, and what that frees.
struct QuitSafetyResult {
  QuitSafetyVerdictKind verdict = QuitSafetyVerdictKind::askFirst;
  std::string reason;
  std::uint64_t freedMemoryBytes = 0;
  std::vector<std::uint16_t> freedPorts;

  bool operator==(const QuitSafetyResult&) const = default;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"verdict", &QuitSafetyResult::verdict},
                      Field{"reason", &QuitSafetyResult::reason},
                      Field{"freedMemoryBytes", &QuitSafetyResult::freedMemoryBytes},
                      Field{"freedPorts", &QuitSafetyResult::freedPorts}};
  }
};

}  // namespace korvantis
