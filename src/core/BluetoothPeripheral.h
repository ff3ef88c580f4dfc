#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One connected Bluetooth device. Percents are 0 to 100.
struct BluetoothPeripheral {
  std::string name;
  std::string category = "accessory";
  std::int64_t batteryPercent = 0;
  std::optional<std::int64_t> leftPercent;
  std::optional<std::int64_t> rightPercent;
  std::optional<std::int64_t> casePercent;

  bool operator==(const BluetoothPeripheral&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return name; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"name", &BluetoothPeripheral::name},
                      Field{"category", &BluetoothPeripheral::category},
                      Field{"batteryPercent", &BluetoothPeripheral::batteryPercent},
                      Field{"leftPercent", &BluetoothPeripheral::leftPercent},
                      Field{"rightPercent", &BluetoothPeripheral::rightPercent},
                      Field{"casePercent", &BluetoothPeripheral::casePercent}};
  }
};

}  // namespace korvantis
