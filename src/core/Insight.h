#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "core/Field.h"
#include "core/InsightKind.h"
#include "core/Instant.h"
#include "core/Uuid.h"

namespace korvantis {

/// One finding about the machine or an application.
struct Insight {
  /// New for each insight.
  Uuid id;
  InsightKind kind = InsightKind::sustainedCPU;
  std::optional<std::string> targetAppID;
  std::optional<std::string> targetAppName;
  std::string title;
  std::string detail;
  std::string metricText;
  Instant createdAt;
  bool isPinned = false;

  bool operator==(const Insight&) const = default;

  /// What tells one of these from another in a list.
  const Uuid& identity() const { return id; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"id", &Insight::id},
                      Field{"kind", &Insight::kind},
                      Field{"targetAppID", &Insight::targetAppID},
                      Field{"targetAppName", &Insight::targetAppName},
                      Field{"title", &Insight::title},
                      Field{"detail", &Insight::detail},
                      Field{"metricText", &Insight::metricText},
                      Field{"createdAt", &Insight::createdAt},
                      Field{"isPinned", &Insight::isPinned}};
  }
};

}  // namespace korvantis
