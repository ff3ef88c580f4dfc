#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/Field.h"
#include "core/HelperRole.h"

namespace korvantis {

/// One line of an application's breakdown by helper role.
struct HelperShare {
  HelperRole role = HelperRole::main;
  std::int64_t processCount = 0;
  double cpuPercent = 0;
  std::uint64_t memoryBytes = 0;
  double gpuPercent = 0;

  bool operator==(const HelperShare&) const = default;

  /// What tells one of these from another in a list.
  std::string_view identity() const { return rawValue(role); }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"role", &HelperShare::role},
                      Field{"processCount", &HelperShare::processCount},
                      Field{"cpuPercent", &HelperShare::cpuPercent},
                      Field{"memoryBytes", &HelperShare::memoryBytes},
                      Field{"gpuPercent", &HelperShare::gpuPercent}};
  }
};

}  // namespace korvantis
