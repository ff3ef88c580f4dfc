#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"
#include "core/Instant.h"

namespace korvantis {

/// An application whose insights are silenced.
struct MutedApp {
  std::string appID;
  std::string appName;
  std::optional<std::string> bundlePath;
  /// End of the mute; absent means until the user unmutes.
  std::optional<Instant> until;

  bool operator==(const MutedApp&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return appID; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"appID", &MutedApp::appID}, Field{"appName", &MutedApp::appName},
                      Field{"bundlePath", &MutedApp::bundlePath}, Field{"until", &MutedApp::until}};
  }
};

}  // namespace korvantis
