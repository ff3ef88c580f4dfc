#pragma once

#include <array>
#include <string_view>

#include "core/EnumerationTable.h"
#include "state/CaseNames.h"

namespace korvantis {

/// How far the history pane looks back. The raw value is the label.
enum class HistoryRangeOption { hour1, hour6, hour24, days7, days30, days90, year1 };

template <>
struct EnumerationTable<HistoryRangeOption> {
  using Raw = std::string_view;
  using Row = EnumerationRow<HistoryRangeOption, Raw>;
  static constexpr std::array rows{
      Row{HistoryRangeOption::hour1, "1h"},   Row{HistoryRangeOption::hour6, "6h"},
      Row{HistoryRangeOption::hour24, "24h"}, Row{HistoryRangeOption::days7, "7d"},
      Row{HistoryRangeOption::days30, "30d"}, Row{HistoryRangeOption::days90, "90d"},
      Row{HistoryRangeOption::year1, "1y"}};
};

template <>
struct CaseNames<HistoryRangeOption> {
  static constexpr std::array<std::string_view, 7> names{"hour1",  "hour6",  "hour24", "days7",
                                                         "days30", "days90", "year1"};
};

/// How many seconds before now the range begins.
constexpr double lookBackSeconds(HistoryRangeOption value) {
  switch (value) {
    case HistoryRangeOption::hour1: return 3600;
    case HistoryRangeOption::hour6: return 21600;
    case HistoryRangeOption::hour24: return 86400;
    case HistoryRangeOption::days7: return 604800;
    case HistoryRangeOption::days30: return 2592000;
    case HistoryRangeOption::days90: return 7776000;
    case HistoryRangeOption::year1: return 31536000;
  }
  return 0;
}

}  // namespace korvantis
