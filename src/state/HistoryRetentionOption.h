#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// How long history may be kept. The raw value is the number of days.
enum class HistoryRetentionOption { days30, days90, days365 };

template <>
struct EnumerationTable<HistoryRetentionOption> {
  using Raw = int;
  using Row = EnumerationRow<HistoryRetentionOption, Raw>;
  static constexpr std::array rows{Row{HistoryRetentionOption::days30, 30},
                                   Row{HistoryRetentionOption::days90, 90},
                                   Row{HistoryRetentionOption::days365, 365}};
};

template <>
struct CaseNames<HistoryRetentionOption> {
  static constexpr std::array<std::string_view, 3> names{"days30", "days90", "days365"};
};

/// The words for it.
constexpr std::string_view label(HistoryRetentionOption value) {
  switch (value) {
    case HistoryRetentionOption::days30: return "30 days";
    case HistoryRetentionOption::days90: return "90 days";
    case HistoryRetentionOption::days365: return "1 year";
  }
  return "";
}

}  // namespace korvantis
