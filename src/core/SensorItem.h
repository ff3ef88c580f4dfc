#pragma once

#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One temperature sensor.
struct SensorItem {
  std::string name;
  /// The cluster or part of the machine that it belongs to.
  std::string group;
  double celsius = 0;

  bool operator==(const SensorItem&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return name; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"name", &SensorItem::name}, Field{"group", &SensorItem::group},
                      Field{"celsius", &SensorItem::celsius}};
  }
};

}  // namespace korvantis
