#pragma once

#include <cstdint>
#include <optional>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// The battery in one tick. The defaults stand in on a machine without one.
struct BatterySample {
  /// Charge, 0 to 100.
  double percentage = 100.0;
  bool isCharging = false;
  /// On external power.
  bool isPluggedIn = true;
  /// Power in or out, watts.
  double watts = 0.0;
  /// Maximum against design capacity, 0 to 100.
  double healthPercent = 100.0;
  std::int64_t cycleCount = 42;
  double temperatureCelsius = 31.5;
  /// Minutes to empty or to full; absent when unknown.
  std::optional<std::int64_t> timeRemainingMinutes;

  bool operator==(const BatterySample&) const = default;

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"percentage", &BatterySample::percentage},
                      Field{"isCharging", &BatterySample::isCharging},
                      Field{"isPluggedIn", &BatterySample::isPluggedIn},
                      Field{"watts", &BatterySample::watts},
                      Field{"healthPercent", &BatterySample::healthPercent},
                      Field{"cycleCount", &BatterySample::cycleCount},
                      Field{"temperatureCelsius", &BatterySample::temperatureCelsius},
                      Field{"timeRemainingMinutes", &BatterySample::timeRemainingMinutes}};
  }
};

}  // namespace korvantis
