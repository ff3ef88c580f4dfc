#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "core/AppLimitFigure.h"
#include "core/Field.h"
#include "core/Uuid.h"

namespace korvantis {

/// A user's limit on one figure of one application.
struct AppLimit {
  Uuid id;
  std::string appID;
  std::string appName;
  std::optional<std::string> bundlePath;
  AppLimitFigure figure = AppLimitFigure::cpuPercent;
  /// In the unit of the figure.
  double limit = 150.0;
  /// How long the figure must stay over the limit.
  std::int64_t minutes = 5;
  bool isEnabled = true;

  bool operator==(const AppLimit&) const = default;

  /// What tells one of these from another in a list.
  const Uuid& identity() const { return id; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{
        Field{"id", &AppLimit::id},           Field{"appID", &AppLimit::appID},
        Field{"appName", &AppLimit::appName}, Field{"bundlePath", &AppLimit::bundlePath},
        Field{"figure", &AppLimit::figure},   Field{"limit", &AppLimit::limit},
        Field{"minutes", &AppLimit::minutes}, Field{"isEnabled", &AppLimit::isEnabled}};
  }
};

}  // namespace korvantis
