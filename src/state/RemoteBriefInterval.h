#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// How often a brief goes out by itself. The raw value is what the settings show and what is
/// stored.
enum class RemoteBriefInterval { off, every1Hour, every4Hours, every12Hours, daily };

template <>
struct EnumerationTable<RemoteBriefInterval> {
  using Raw = std::string_view;
  using Row = EnumerationRow<RemoteBriefInterval, Raw>;
  static constexpr std::array rows{Row{RemoteBriefInterval::off, "Only on Strain Alerts"},
                                   Row{RemoteBriefInterval::every1Hour, "Every 1 Hour"},
                                   Row{RemoteBriefInterval::every4Hours, "Every 4 Hours"},
                                   Row{RemoteBriefInterval::every12Hours, "Every 12 Hours"},
                                   Row{RemoteBriefInterval::daily, "Once Daily (24h)"}};
};

template <>
struct CaseNames<RemoteBriefInterval> {
  static constexpr std::array<std::string_view, 5> names{"off", "every1Hour", "every4Hours",
                                                         "every12Hours", "daily"};
};

/// Seconds from one periodic brief to the next; absent when there are none.
constexpr std::optional<double> intervalSeconds(RemoteBriefInterval value) {
  switch (value) {
    case RemoteBriefInterval::off: return std::nullopt;
    case RemoteBriefInterval::every1Hour: return 3600.0;
    case RemoteBriefInterval::every4Hours: return 14400.0;
    case RemoteBriefInterval::every12Hours: return 43200.0;
    case RemoteBriefInterval::daily: return 86400.0;
  }
  return std::nullopt;
}

}  // namespace korvantis
