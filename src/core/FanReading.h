#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One fan.
struct FanReading {
  /// Index from 0.
  std::int64_t id = 0;
  std::string name;
  double currentRPM = 0;
  double minRPM = 1200.0;
  double maxRPM = 5800.0;
  /// A manual target is in force.
  bool isManual = false;
  /// The manual target; absent under automatic control.
  std::optional<double> targetRPM;

  bool operator==(const FanReading&) const = default;

  /// What tells one of these from another in a list.
  std::int64_t identity() const { return id; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"id", &FanReading::id},
                      Field{"name", &FanReading::name},
                      Field{"currentRPM", &FanReading::currentRPM},
                      Field{"minRPM", &FanReading::minRPM},
                      Field{"maxRPM", &FanReading::maxRPM},
                      Field{"isManual", &FanReading::isManual},
                      Field{"targetRPM", &FanReading::targetRPM}};
  }
};

}  // namespace korvantis
