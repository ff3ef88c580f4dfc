#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One audio device.
struct AudioDeviceItem {
  /// The audio object's id.
  std::uint32_t id = 0;
  std::string name;
  bool isInput = false;
  bool isDefault = false;

  bool operator==(const AudioDeviceItem&) const = default;

  /// What tells one of these from another in a list.
  std::uint32_t identity() const { return id; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"id", &AudioDeviceItem::id}, Field{"name", &AudioDeviceItem::name},
                      Field{"isInput", &AudioDeviceItem::isInput},
                      Field{"isDefault", &AudioDeviceItem::isDefault}};
  }
};

}  // namespace korvantis
