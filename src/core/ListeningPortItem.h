#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// One listening TCP port and who holds it.
struct ListeningPortItem {
  std::uint16_t port = 0;
  std::int32_t pid = 0;
  std::string processName;
  std::string appName;
  std::optional<std::string> projectName;
  std::optional<std::string> projectPath;
  bool isIdle = false;
  std::uint64_t memoryBytes = 0;

  bool operator==(const ListeningPortItem&) const = default;

  /// What tells one of these from another in a list.
  std::string identity() const { return std::to_string(port) + "-" + std::to_string(pid); }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"port", &ListeningPortItem::port},
                      Field{"pid", &ListeningPortItem::pid},
                      Field{"processName", &ListeningPortItem::processName},
                      Field{"appName", &ListeningPortItem::appName},
                      Field{"projectName", &ListeningPortItem::projectName},
                      Field{"projectPath", &ListeningPortItem::projectPath},
                      Field{"isIdle", &ListeningPortItem::isIdle},
                      Field{"memoryBytes", &ListeningPortItem::memoryBytes}};
  }
};

}  // namespace korvantis
