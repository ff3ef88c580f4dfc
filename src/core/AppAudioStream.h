#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"

namespace korvantis {

/// The audio of one application.
struct AppAudioStream {
  std::string appID;
  std::string appName;
  std::int32_t pid = 0;
  std::optional<std::string> bundlePath;
  /// 0.0 to 1.0.
  double volume = 1.0;
  bool isMuted = false;
  bool isActive = false;

  bool operator==(const AppAudioStream&) const = default;

  /// What tells one of these from another in a list.
  const std::string& identity() const { return appID; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"appID", &AppAudioStream::appID},
                      Field{"appName", &AppAudioStream::appName},
                      Field{"pid", &AppAudioStream::pid},
                      Field{"bundlePath", &AppAudioStream::bundlePath},
                      Field{"volume", &AppAudioStream::volume},
                      Field{"isMuted", &AppAudioStream::isMuted},
                      Field{"isActive", &AppAudioStream::isActive}};
  }
};

}  // namespace korvantis
