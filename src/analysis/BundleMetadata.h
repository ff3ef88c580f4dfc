#pragma once

#include <optional>
#include <string>

#include "core/AppGroupKind.h"

namespace korvantis {

/// What an application bundle says about itself.
struct BundleMetadata {
  /// Display name.
  std::string name;
  std::optional<std::string> bundleIdentifier;
  /// `app` or `system`; a bundle is never `other`.
  AppGroupKind kind = AppGroupKind::app;

  bool operator==(const BundleMetadata&) const = default;
};

}  // namespace korvantis
